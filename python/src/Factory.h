#ifndef KobwbxPythonFactory_h
#define KobwbxPythonFactory_h

// The Factory and Equation classes: variables, constants, equations, domains,
// printing of the whole system.

#include "Handles.h"

namespace kobwbx_python {

// Variables without a value (made by model conversion) range over every real.
void GiveEveryRealToUnset(KOBWBFactory& factory);

void BindFactory(py::module_& module);

} // namespace kobwbx_python

#endif
