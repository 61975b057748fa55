#include "Model.h"

#include "Errors.h"
#include "Factory.h"

#include <algorithm>
#include <vector>

namespace kobwbx_python {

namespace {

// One problem of a model text; line and column count from 1, as editors do.
using Diagnostic = KOBWBModelReport;

// A model text parsed and checked. The parser's ids are kept as they were read:
// each conversion works on a copy, which it overwrites with factory ids.
struct ParsedModel {
    KOBWBModel model;
    KOBLVRIntArray ids;
    KOBWBParserMessenger messenger;
    std::vector<Diagnostic> errors;
};

std::shared_ptr<ParsedModel> Parse(const std::string& text) {
    if (text.find('\0') != std::string::npos) throw py::value_error("model text holds a NUL character");
    auto parsed = std::make_shared<ParsedModel>();
    // Reports are read back below rather than written to standard error.
    parsed->messenger.SetEchoToStandardError(false);
    KOBWBParser::Parse(text.c_str(), parsed->model, parsed->ids, parsed->messenger, nullptr);
    // Each message with what the text tells about it: which quantities and units
    // disagree, where a ';' is missing.
    parsed->errors = KOBWBModelReports::Errors(text, parsed->model, parsed->messenger);
    std::stable_sort(parsed->errors.begin(), parsed->errors.end(), [](const Diagnostic& a, const Diagnostic& b) {
        return a.line != b.line ? a.line < b.line : a.column < b.column;
    });
    return parsed;
}

std::string ErrorText(const ParsedModel& parsed) {
    std::string text = std::to_string(parsed.errors.size()) + " error(s) in the model text";
    for (const Diagnostic& error : parsed.errors)
        text += "\n  " + std::to_string(error.line) + ":" + std::to_string(error.column) + ": " + error.message;
    return text;
}

// The equations decided to mix kinds of quantity; sides the check cannot decide
// (a function of a length) are not reported.
py::list Inhomogeneous(ParsedModel& parsed) {
    py::list found;
    for (KOBWBEqNode* equation = parsed.model.GetFirstEquation(); equation;
         equation = parsed.model.GetNextEquation(equation)) {
        if (!equation->GetRightTerm() || KOBWBModelHomogeneity::CheckHomogeneity(*equation) != 1) continue;
        const KOBLVRString left = KOBWBModelHomogeneity::FillHomogeneity(equation->GetLeftTerm());
        const KOBLVRString right = KOBWBModelHomogeneity::FillHomogeneity(equation->GetRightTerm());
        if (left == KOBWBUnitClassUnsolved || right == KOBWBUnitClassUnsolved) continue;
        const KOBWBLocation& location = equation->GetLocation();
        found.append(py::make_tuple(location.GetFirstLine(), location.GetFirstColumn() + 1, std::string(left.str()),
                                    std::string(right.str())));
    }
    return found;
}

std::vector<std::string> VariableNames(const ParsedModel& parsed) {
    KOBLVRListPKOBWBVarNode occurrences;
    parsed.model.GetVariables(occurrences);
    std::vector<std::string> names;
    for (int i = 0; i < occurrences.Size(); ++i) {
        const std::string name = occurrences[i]->GetName().str();
        if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
    }
    return names;
}

FactoryRef ToFactory(ParsedModel& parsed, const py::object& into) {
    if (!parsed.errors.empty()) throw ModelFailure(ErrorText(parsed));
    if (!into.is_none() && !py::isinstance<FactoryRef>(into))
        throw py::type_error("to_factory() takes a Factory or None, not " + py::str(py::type::of(into)).cast<std::string>());
    FactoryRef target = into.is_none() ? FactoryRef{std::make_shared<FactoryHolder>()} : into.cast<FactoryRef>();
    KOBWBFactory& factory = target.owner->Factory();
    // Names the factory already has keep their variables.
    KOBLVRListPKOBWBVarNode variableNodes;
    KOBLVRListPKOBWBVariable factoryVariables;
    for (const std::string& name : VariableNames(parsed)) {
        KOBWBVariable* variable = target.owner->FindVariable(name);
        if (!variable) continue;
        variableNodes.Append(parsed.model.GetVariable(name.c_str()));
        factoryVariables.Append(variable);
    }
    KOBLVRIntArray ids(parsed.ids);
    const long made = parsed.model.FillFactory(factory, ids, -1, variableNodes, factoryVariables);
    GiveEveryRealToUnset(factory);
    if (made != ids.Size()) throw ModelFailure("some equations of the model could not be converted");
    return target;
}

} // namespace

void BindModel(py::module_& module) {
    py::class_<Diagnostic>(module, "ModelMessage", "An error of a model text: line and column from 1, the message, its code.")
        .def_readonly("line", &Diagnostic::line)
        .def_readonly("column", &Diagnostic::column)
        .def_readonly("message", &Diagnostic::message)
        .def_readonly("code", &Diagnostic::code)
        .def("__iter__", [](const Diagnostic& d) { return py::iter(py::make_tuple(d.line, d.column, d.message)); })
        .def("__repr__", [](const Diagnostic& d) {
            return "ModelMessage(" + std::to_string(d.line) + ", " + std::to_string(d.column) + ", " +
                   py::repr(py::str(d.message)).cast<std::string>() + ")";
        });

    py::class_<ParsedModel, std::shared_ptr<ParsedModel>>(module, "Model",
                                                          "Model text parsed and checked (kobwbx.parse).")
        .def_property_readonly("errors", [](const ParsedModel& m) { return m.errors; },
                               "The syntax and model-check errors, in text order: ModelMessage(line, column, message).")
        .def_property_readonly("ok", [](const ParsedModel& m) { return m.errors.empty(); })
        .def_property_readonly("equation_count", [](const ParsedModel& m) { return m.model.GetNbOfEquations(); })
        .def_property_readonly("variable_names", &VariableNames, "Names in order of first appearance.")
        .def_property_readonly("invalid_characters",
                               [](const ParsedModel& m) {
                                   py::list found;
                                   for (int i = 0; i < m.messenger.GetNbOfInvalidCharacters(); ++i) {
                                       int line = 0;
                                       int column = 0;
                                       m.messenger.GetInvalidCharacter(i, line, column);
                                       found.append(py::make_tuple(line, column + 1));
                                   }
                                   return found;
                               },
                               "(line, column) of each character the scanner skipped.")
        .def("inhomogeneous_equations", &Inhomogeneous,
             "(line, column, left kind, right kind) of each equation whose sides are decided to be different "
             "kinds of quantity (lengths, angles).")
        .def_property_readonly("is_homogeneous", [](ParsedModel& m) { return py::len(Inhomogeneous(m)) == 0; })
        .def("to_factory", &ToFactory, py::arg("factory") = py::none(),
             "The equations converted into a factory (a new one, or the one given, whose variables of the same "
             "names are reused), variables named as in the text; ModelError when the text has errors.");

    module.def("parse", &Parse, py::arg("text"),
               "Parses and checks model text; the Model lists its errors rather than raising.");
    module.def(
        "from_text",
        [](const std::string& text) {
            std::shared_ptr<ParsedModel> parsed = Parse(text);
            return ToFactory(*parsed, py::none());
        },
        py::arg("text"), "A factory made from model text; ModelError (listing the errors) when it has some.");
}

} // namespace kobwbx_python
