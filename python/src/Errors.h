#ifndef KobwbxPythonErrors_h
#define KobwbxPythonErrors_h

// The exceptions the binding raises besides Python's own: the library reports
// through null results and error bits, which the binding turns into these.

#include <stdexcept>

namespace kobwbx_python {

// kobwbx.EvaluationError (an ArithmeticError): an evaluation set error bits.
struct EvaluationFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// kobwbx.ModelError (a ValueError): model text with errors was converted.
struct ModelFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace kobwbx_python

#endif
