#include "KOBLVRGlobalParameters.h"

KOBLVRGlobalParameters& GetGlobalParameters() {
    static KOBLVRGlobalParameters parameters;
    return parameters;
}
