#ifndef KOBLVROperator_h
#define KOBLVROperator_h

#include "KOBLVRString.h"

#include <iosfwd>

class KOBLVRStream;

// Base of long-running operators with a replay discipline. Run() has the operator
// write its input replay to the replay stream (when one is set), performs its work
// (DoRun), then has it write its output replay. Each writer adds its sections to the
// stream's storage and closes its part of the replay itself.
class KOBWBX_API KOBLVROperator {
public:
    // Describes an operator: its name, its short name (or version text) and a tag.
    class KOBWBX_API OperatorInfo {
    public:
        OperatorInfo(const KOBLVRString& name, const KOBLVRString& version, const char* text);
        const KOBLVRString& GetName() const { return m_name; }
        const KOBLVRString& GetVersion() const { return m_version; }
        const KOBLVRString& GetText() const { return m_text; }

    private:
        KOBLVRString m_name;
        KOBLVRString m_version;
        KOBLVRString m_text;
    };

    typedef bool (*InterruptFunction)(int, int);

    KOBLVROperator();
    KOBLVROperator(const KOBLVROperator&) = delete;
    KOBLVROperator& operator=(const KOBLVROperator&) = delete;

    // The virtual members in the order of their slots.
    virtual ~KOBLVROperator();
    // Reads what the operator needs from its environment; nothing by default.
    virtual void InitWithEnv();
    virtual void SetInterruptFunction(bool (*function)(int, int));
    // The operator's work; its result is what Run returns.
    virtual int DoRun() = 0;
    // The version of the replay the operator writes; 0 by default.
    virtual int GetVersionOfStream() const;
    virtual bool CheckInput(KOBLVRStream& stream) const;
    virtual bool CheckOutput(KOBLVRStream& stream) const;
    virtual void WriteInput(KOBLVRStream& stream) const;
    virtual void WriteOutput(KOBLVRStream& stream) const;
    virtual KOBLVRString GetOperatorName();
    virtual KOBLVRString GetOperatorShortName();
    virtual void SetLVRLevel(unsigned level);
    // Destroys the operator, which must have been made with new.
    virtual void Remove();

protected:
    // The description of the operator; the base's describes no operator.
    virtual OperatorInfo& GetOperatorInfo();

public:
    virtual bool CheckInput(std::ostream& stream) const;
    virtual bool CheckOutput(std::ostream& stream) const;

    int Run();

    void SetReplayStream(KOBLVRStream* stream) { m_replay = stream; }
    KOBLVRStream* GetReplayStream() const { return m_replay; }
    unsigned GetLVRLevel() const { return m_level; }

protected:
    // True when the interrupt function asks to stop at step of total.
    bool IsInterrupted(int step, int total) const;

private:
    unsigned m_level = 0;
    InterruptFunction m_interrupt = nullptr;
    KOBLVRStream* m_replay = nullptr;
};

#endif
