#ifndef KobwbxPythonAlgebra_h
#define KobwbxPythonAlgebra_h

// Classification, simplification, the polynomial tools and integration.

#include "Handles.h"

namespace kobwbx_python {

void BindAlgebra(py::module_& module);

} // namespace kobwbx_python

#endif
