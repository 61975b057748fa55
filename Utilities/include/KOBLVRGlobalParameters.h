#ifndef KOBLVRGlobalParameters_h
#define KOBLVRGlobalParameters_h

#include "KOBWBxExport.h"

class KOBLVRStream;

// Process-wide settings: the trace stream and level, the default of the switch
// that selects the old symbolic transformations, and the configuration level.
class KOBWBX_API KOBLVRGlobalParameters {
public:
    KOBLVRStream* GetTraceStream() const { return m_traceStream; }
    void SetTraceStream(KOBLVRStream* stream) { m_traceStream = stream; }
    // 0 none, 1 system dumps, 2 per-expression detail.
    int GetTraceLevel() const { return m_traceLevel; }
    void SetTraceLevel(int level) { m_traceLevel = level; }
    // The trace stream when tracing is on at the given level at least, else null.
    KOBLVRStream* GetTraceStream(int level) const {
        return m_traceLevel >= level ? m_traceStream : nullptr;
    }
    bool IsUseOldST() const { return m_useOldST; }
    void SetUseOldST(bool use) { m_useOldST = use; }
    unsigned GetLVRFullOpenConfigurationLevel() const { return m_configurationLevel; }
    void SetLVRFullOpenConfigurationLevel(unsigned level) { m_configurationLevel = level; }

private:
    KOBLVRStream* m_traceStream = nullptr;
    int m_traceLevel = 0;
    bool m_useOldST = false;
    unsigned m_configurationLevel = 0;
};

KOBWBX_API KOBLVRGlobalParameters& GetGlobalParameters();

#endif
