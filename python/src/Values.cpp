#include "Values.h"

#include "Handles.h"

#include <cmath>
#include <limits>
#include <charconv>

namespace kobwbx_python {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

// The library's largest real reads as an infinity in Python.
double ToPython(double bound) {
    if (bound >= KOBWBMaxReal) return infinity;
    if (bound <= -KOBWBMaxReal) return -infinity;
    return bound;
}

double ToNumber(const py::handle& object, const char* what) {
    if (PyBool_Check(object.ptr()) || !(PyFloat_Check(object.ptr()) || PyLong_Check(object.ptr()) ||
                                        py::hasattr(object, "__float__")))
        throw py::type_error(std::string(what) + " must be a number, not " +
                             py::str(py::type::of(object)).cast<std::string>());
    const double value = py::float_(py::reinterpret_borrow<py::object>(object));
    if (std::isnan(value)) throw py::value_error(std::string(what) + " is NaN");
    return value;
}

Interval MakeInterval(double lower, double upper) {
    if (std::isnan(lower) || std::isnan(upper)) throw py::value_error("an interval bound is NaN");
    if (lower > upper)
        throw py::value_error("inverted interval: lower bound " + py::repr(py::float_(lower)).cast<std::string>() +
                              " above upper bound " + py::repr(py::float_(upper)).cast<std::string>());
    const KOBWBRealInterval clamped = KOBWBCreateRealInterval(lower, upper);
    if (clamped.lower > clamped.upper) throw py::value_error("the interval lies beyond the largest real");
    return {ToPython(clamped.lower), ToPython(clamped.upper)};
}

// The shortest text that reads back to the same double.
std::string BoundText(double bound) {
    char text[64];
    const std::to_chars_result written = std::to_chars(text, text + sizeof text, bound);
    return std::string(text, written.ptr);
}

py::object Enumeration(const KOBWBValue& value, bool integer) {
    const KOBWBRealEnum real = integer ? KOBWBRealEnum() : value.GetRealEnum();
    const KOBWBIntegerEnum& whole = value.GetIntegerEnum();
    const KOBWBEnumRepresentation representation =
        integer ? whole.GetRepresentation() : real.GetRepresentation();
    if (representation == KOBWBEnumAny) return py::none();
    if (representation == KOBWBEnumNil) return py::cast(Interval{infinity, -infinity});
    if (representation == KOBWBEnumInterval) {
        const KOBWBRealInterval interval = value.GetAsRealInterval();
        return py::cast(Interval{ToPython(interval.lower), ToPython(interval.upper)});
    }
    const int size = integer ? whole.GetSize() : real.GetSize();
    py::tuple elements(size);
    for (int i = 0; i < size; ++i)
        elements[i] = integer ? py::object(py::int_(whole.Get(i))) : py::object(py::float_(real.Get(i)));
    return std::move(elements);
}

} // namespace

KOBWBValue ToDomain(const py::handle& object) {
    if (object.is_none()) return KOBWBValue(KOBWBCreateRealInterval(-KOBWBMaxReal, KOBWBMaxReal));
    if (py::isinstance<Interval>(object) || py::isinstance<py::tuple>(object) || py::isinstance<py::list>(object)) {
        const Interval interval = ToInterval(object);
        if (interval.IsEmpty()) return KOBWBValue(KOBWBReal_Nil);
        return KOBWBValue(KOBWBCreateRealInterval(interval.lower, interval.upper));
    }
    const double point = ToNumber(object, "a domain");
    const KOBWBRealInterval clamped = KOBWBCreateRealInterval(point, point);
    return KOBWBValue(clamped.lower);
}

Interval ToInterval(const py::handle& object) {
    if (py::isinstance<Interval>(object)) return object.cast<Interval>();
    if (py::isinstance<py::tuple>(object) || py::isinstance<py::list>(object)) {
        const py::sequence pair = py::reinterpret_borrow<py::sequence>(object);
        if (py::len(pair) != 2)
            throw py::value_error("an interval is a pair (lower, upper), not " + std::to_string(py::len(pair)) +
                                  " numbers");
        return MakeInterval(ToNumber(pair[0], "the lower bound"), ToNumber(pair[1], "the upper bound"));
    }
    if (object.is_none()) return {-infinity, infinity};
    const double point = ToNumber(object, "an interval");
    return MakeInterval(point, point);
}

py::object FromValue(const KOBWBValue& value) {
    if (value.IsAFraction()) {
        const KOBWBFraction fraction = value.GetAsFraction();
        if (fraction.powerOfPi == 0) {
            if (fraction.denominator == 1) return py::int_(fraction.numerator);
            return FractionType()(fraction.numerator, fraction.denominator);
        }
        return py::float_(value.GetAsReal());
    }
    switch (value.GetType()) {
    case KOBWBIntegerValue: {
        const int n = value.GetAsInteger();
        if (KOBWBIsNilInteger(n)) return py::cast(Interval{infinity, -infinity});
        return py::int_(n);
    }
    case KOBWBRealValue: {
        const double x = value.GetAsReal();
        if (KOBWBIsNilReal(x)) return py::cast(Interval{infinity, -infinity});
        return py::float_(ToPython(x));
    }
    case KOBWBIntegerIntervalValue:
    case KOBWBRealIntervalValue: {
        const KOBWBRealInterval interval = value.GetAsRealInterval();
        if (interval.lower > interval.upper) return py::cast(Interval{infinity, -infinity});
        return py::cast(Interval{ToPython(interval.lower), ToPython(interval.upper)});
    }
    case KOBWBIntegerEnumValue: return Enumeration(value, true);
    case KOBWBRealEnumValue: return Enumeration(value, false);
    case KOBWBBooleanValue: {
        const KOBWBBoolean b = value.GetAsBoolean();
        if (b == KOBWBTrue || b == KOBWBFalse) return py::bool_(b == KOBWBTrue);
        return py::cast(b);
    }
    default: return py::none();
    }
}

py::object FromValueAsBounds(const KOBWBValue& value) {
    switch (value.GetType()) {
    case KOBWBIntegerValue:
    case KOBWBRealValue:
    case KOBWBIntegerIntervalValue:
    case KOBWBRealIntervalValue: {
        const KOBWBRealInterval interval = value.GetAsRealInterval();
        if (interval.lower > interval.upper || KOBWBIsNilReal(interval.lower)) return py::make_tuple(infinity, -infinity);
        return py::make_tuple(ToPython(interval.lower), ToPython(interval.upper));
    }
    default: return FromValue(value);
    }
}

void BindValues(py::module_& module) {
    py::enum_<KOBWBBoolean>(module, "Boolean",
                            "The four-valued boolean of conditions: certain values come back as bool, "
                            "UNDEF (either) and CONTR (neither) as members of this enumeration.")
        .value("FALSE", KOBWBFalse)
        .value("TRUE", KOBWBTrue)
        .value("UNDEF", KOBWBUndef)
        .value("CONTR", KOBWBContr);

    py::class_<Interval>(module, "Interval",
                         "A closed real interval [lower, upper]. Infinite bounds stand for the library's "
                         "largest real. The empty interval (Interval.empty()) is the Nil value evaluations "
                         "give where nothing can be computed.")
        .def(py::init([](const py::object& lower, const py::object& upper) {
                 if (upper.is_none()) return ToInterval(lower);
                 return MakeInterval(ToNumber(lower, "the lower bound"), ToNumber(upper, "the upper bound"));
             }),
             py::arg("lower"), py::arg("upper") = py::none(),
             "Interval(lower, upper), Interval(point), or Interval((lower, upper)); ValueError for NaN or "
             "lower > upper.")
        .def_static("empty", [] { return Interval{infinity, -infinity}; }, "The empty (Nil) interval.")
        .def_readonly("lower", &Interval::lower)
        .def_readonly("upper", &Interval::upper)
        .def_property_readonly("is_empty", &Interval::IsEmpty)
        .def_property_readonly("width",
                               [](const Interval& i) { return i.IsEmpty() ? 0.0 : i.upper - i.lower; })
        .def_property_readonly("mid",
                               [](const Interval& i) {
                                   if (i.IsEmpty()) throw py::value_error("the empty interval has no middle");
                                   if (std::isinf(i.lower) || std::isinf(i.upper)) {
                                       if (std::isinf(i.lower) && std::isinf(i.upper)) return 0.0;
                                       return std::isinf(i.lower) ? i.lower : i.upper;
                                   }
                                   return i.lower + (i.upper - i.lower) / 2;
                               })
        .def("__contains__",
             [](const Interval& i, const py::object& x) {
                 const Interval inner = ToInterval(x);
                 return !i.IsEmpty() && (inner.IsEmpty() || (i.lower <= inner.lower && inner.upper <= i.upper));
             })
        .def("__iter__", [](const Interval& i) { return py::iter(py::make_tuple(i.lower, i.upper)); })
        .def("__eq__",
             [](const Interval& i, const py::object& other) {
                 if (py::isinstance<Interval>(other)) {
                     const Interval o = other.cast<Interval>();
                     return (i.IsEmpty() && o.IsEmpty()) || (i.lower == o.lower && i.upper == o.upper);
                 }
                 // A pair equals the interval of its bounds; no other object does.
                 if (!py::isinstance<py::tuple>(other) || py::len(other) != 2) return false;
                 const py::tuple pair = py::reinterpret_borrow<py::tuple>(other);
                 const py::object lower = pair[0];
                 const py::object upper = pair[1];
                 return !i.IsEmpty() && lower.equal(py::float_(i.lower)) && upper.equal(py::float_(i.upper));
             })
        .def("__hash__",
             [](const Interval& i) {
                 return i.IsEmpty() ? py::hash(py::none()) : py::hash(py::make_tuple(i.lower, i.upper));
             })
        .def("__repr__",
             [](const Interval& i) {
                 if (i.IsEmpty()) return std::string("Interval.empty()");
                 return "Interval(" + BoundText(i.lower) + ", " + BoundText(i.upper) + ")";
             })
        .def("__str__", [](const Interval& i) {
            if (i.IsEmpty()) return std::string("[]");
            return "[" + BoundText(i.lower) + ", " + BoundText(i.upper) + "]";
        });
    py::implicitly_convertible<py::tuple, Interval>();
}

} // namespace kobwbx_python
