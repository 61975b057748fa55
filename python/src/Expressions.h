#ifndef KobwbxPythonExpressions_h
#define KobwbxPythonExpressions_h

// The Expression and Variable classes: operators, functions, relations, and the
// node's own questions (children, variables, value, derivatives, printing).

#include "Handles.h"

namespace kobwbx_python {

// The condition node of a Relation or an Expression (a comparison or a logical
// operator of the owner's factory).
KOBWBExpression* ToCondition(const Owner& owner, const py::handle& object, const char* argument);

void BindExpressions(py::module_& module);
void BindFunctions(py::module_& module);

} // namespace kobwbx_python

#endif
