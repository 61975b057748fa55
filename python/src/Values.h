#ifndef KobwbxPythonValues_h
#define KobwbxPythonValues_h

// Values between Python and the library: the Interval class, Python objects read
// as domains, and the library's values given back as Python objects.

#include "KOBWBx.h"

#include <pybind11/pybind11.h>

namespace kobwbx_python {

namespace py = pybind11;

// A closed real interval; lower > upper is the empty (Nil) interval, made only by
// Interval.empty() and by evaluations. Infinite bounds are the library's largest
// real.
struct Interval {
    double lower;
    double upper;

    bool IsEmpty() const { return lower > upper; }
};

// A domain from Python: an Interval, a (lower, upper) pair, a number (a point,
// read as a real), or None (every real). A ValueError for NaN or crossed bounds, a
// TypeError for other objects.
KOBWBValue ToDomain(const py::handle& object);
// The same, kept an interval: a point becomes [x, x].
Interval ToInterval(const py::handle& object);
// The Python object of a value: None (undefined), int, float, fractions.Fraction
// (an exact fraction without Pi), Interval (intervals, and the empty Interval for
// every Nil value), bool (a certain boolean, kobwbx.Boolean for the other two),
// a tuple of elements for a listed enumeration.
py::object FromValue(const KOBWBValue& value);

// The bounds of a numeric value as a (lower, upper) pair of floats, which Python makes
// several times faster than an Interval: a point x is (x, x), an empty value
// (inf, -inf). Other values as FromValue gives them.
py::object FromValueAsBounds(const KOBWBValue& value);

void BindValues(py::module_& module);

} // namespace kobwbx_python

#endif
