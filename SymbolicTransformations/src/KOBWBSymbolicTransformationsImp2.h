#ifndef KOBWBSymbolicTransformationsImp2_h
#define KOBWBSymbolicTransformationsImp2_h

#include "KOBLVRBoolArray.h"
#include "KOBWBSymbolicTransformations.h"

// The older symbolic transformations, kept for the callers that ask for them through
// their environment. Compared with the default implementation, it rewrites the
// factory's own trees in place (no temporary storage, no duplicated roots), registers
// its properties at each run, always covers every equation, traces the flattening at
// level 1, keeps no expression for the variables it eliminates, and neither writes
// constants canonically nor judges inequalities.
class KOBWBSymbolicTransformationsImp2 : public KOBWBSymbolicTransformations {
public:
    KOBWBSymbolicTransformationsImp2(unsigned level, KOBWBFactory& factory);
    ~KOBWBSymbolicTransformationsImp2() override;

    int DoRun() override;
    void WriteInput(KOBLVRStream& stream) const override;
    void WriteOutput(KOBLVRStream& stream) const override;
};

#endif
