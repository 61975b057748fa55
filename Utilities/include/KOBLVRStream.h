#ifndef KOBLVRStream_h
#define KOBLVRStream_h

#include "KOBLVRStorage.h"
#include "KOBLVRString.h"

#include <iosfwd>
#include <memory>

enum KOBLVRStreamType { KOBLVRTraceStream = 0, KOBLVRReplayStream = 1 };

// An output stream for traces and replay files, with a storage of named sections.
// Built on a caller's std::ostream (not owned) or on a file it opens itself.
class KOBWBX_API KOBLVRStream {
public:
    // Opens the named file, appending to it when append is true.
    KOBLVRStream(const KOBLVRString& name, KOBLVRStreamType type, bool append);
    explicit KOBLVRStream(std::ostream* stream);
    virtual ~KOBLVRStream();
    KOBLVRStream(const KOBLVRStream&) = delete;
    KOBLVRStream& operator=(const KOBLVRStream&) = delete;

    bool IsOpen() const { return m_out != nullptr; }
    KOBLVRStreamType GetType() const { return m_type; }

    KOBLVRStream& operator<<(const KOBLVRString& text);
    KOBLVRStream& operator<<(const char* text);
    KOBLVRStream& operator<<(int value);
    KOBLVRStream& operator<<(double value);
    KOBLVRStream& operator<<(KOBLVRStream& (*manipulator)(KOBLVRStream&));

    void WriteString(const KOBLVRString& text);
    void Flush();
    KOBLVRStorage& GetStorage() { return m_storage; }
    // Writes each stored section of that part, its name line then its content, and
    // forgets it: a part is closed once written.
    void WriteSections(KOBLVRStorage::ReplayPart part);

private:
    std::unique_ptr<std::ostream> m_file;
    std::ostream* m_out = nullptr;
    KOBLVRStreamType m_type = KOBLVRTraceStream;
    KOBLVRStorage m_storage;
};

// Ends the line.
KOBWBX_API KOBLVRStream& lvrendl(KOBLVRStream& stream);

#endif
