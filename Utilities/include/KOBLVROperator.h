#ifndef KOBLVROperator_h
#define KOBLVROperator_h

#include "KOBLVRString.h"

class KOBLVRStream;

// Base of long-running operators. Run() writes the input replay to the replay
// stream (when one is set), performs the operator's work, then writes the output.
class KOBWBX_API KOBLVROperator {
public:
    // Describes an operator: its name, its version text and a free text.
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
    virtual ~KOBLVROperator();
    KOBLVROperator(const KOBLVROperator&) = delete;
    KOBLVROperator& operator=(const KOBLVROperator&) = delete;

    virtual void SetLVRLevel(unsigned level);
    virtual bool CheckInput(KOBLVRStream& stream) const;
    virtual bool CheckOutput(KOBLVRStream& stream) const;
    virtual void WriteInput(KOBLVRStream& stream) const;
    virtual void WriteOutput(KOBLVRStream& stream) const;
    virtual void SetInterruptFunction(bool (*function)(int, int));

    int Run();

    void SetReplayStream(KOBLVRStream* stream) { m_replay = stream; }
    unsigned GetLVRLevel() const { return m_level; }

protected:
    // The operator's work; its result is what Run returns.
    virtual int Execute() = 0;
    // True when the interrupt function asks to stop at step of total.
    bool IsInterrupted(int step, int total) const;

private:
    unsigned m_level = 0;
    InterruptFunction m_interrupt = nullptr;
    KOBLVRStream* m_replay = nullptr;
};

#endif
