#ifndef KobwbxPythonTransformations_h
#define KobwbxPythonTransformations_h

// The symbolic transformations operator and the contractor.

#include "Handles.h"

namespace kobwbx_python {

void BindTransformations(py::module_& module);

} // namespace kobwbx_python

#endif
