#ifndef KobwbxPythonModel_h
#define KobwbxPythonModel_h

// Model text: parsing with its errors, homogeneity, conversion into a factory.

#include "Handles.h"

namespace kobwbx_python {

void BindModel(py::module_& module);

} // namespace kobwbx_python

#endif
