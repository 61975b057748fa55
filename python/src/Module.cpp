// The kobwbx Python module: the library's public interface with Python's
// conventions. The library never throws; the binding turns its null results,
// error bits and error lists into Python exceptions, and refuses nodes of closed
// or other factories before they reach it.

#include "Algebra.h"
#include "Errors.h"
#include "Evaluation.h"
#include "Expressions.h"
#include "Factory.h"
#include "Model.h"
#include "Solver.h"
#include "Transformations.h"
#include "Values.h"

PYBIND11_MODULE(_kobwbx, module) {
    namespace binding = kobwbx_python;
    module.doc() = "White-box expression graphs of equation systems: build, evaluate, differentiate, "
                   "simplify, read and print them.";
    pybind11::register_exception<binding::EvaluationFailure>(module, "EvaluationError", PyExc_ArithmeticError);
    pybind11::register_exception<binding::ModelFailure>(module, "ModelError", PyExc_ValueError);
    // A Python object of the wrong type that reached a conversion is the caller's
    // type error, not the binding's.
    pybind11::register_exception_translator([](std::exception_ptr raised) {
        try {
            if (raised) std::rethrow_exception(raised);
        } catch (const pybind11::cast_error& error) {
            PyErr_SetString(PyExc_TypeError, error.what());
        }
    });
    binding::BindValues(module);
    binding::BindFactory(module);
    binding::BindExpressions(module);
    binding::BindFunctions(module);
    binding::BindEvaluation(module);
    binding::BindAlgebra(module);
    binding::BindModel(module);
    binding::BindTransformations(module);
    binding::BindSolver(module);
}
