#ifndef KobwbxPythonEvaluation_h
#define KobwbxPythonEvaluation_h

// Evaluation of many nodes at once: Factory.evaluate, Factory.residuals and the
// Jacobian, each one call into the library.

#include "Handles.h"

namespace kobwbx_python {

void BindEvaluation(py::module_& module);

} // namespace kobwbx_python

#endif
