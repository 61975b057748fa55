#ifndef KobwbxPythonSolver_h
#define KobwbxPythonSolver_h

// The point solver and the search of every solution.

#include "Handles.h"

namespace kobwbx_python {

void BindSolver(py::module_& module);

} // namespace kobwbx_python

#endif
