#include "Handles.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace kobwbx_python {

FactoryHolder::FactoryHolder() : m_factory(std::make_unique<KOBWBFactory>()) {}

FactoryHolder::~FactoryHolder() { Close(); }

KOBWBFactory& FactoryHolder::Factory() const {
    if (!m_factory) throw std::runtime_error("the factory was closed: its nodes and equations are gone");
    return *m_factory;
}

void FactoryHolder::Close() {
    // Attachments detach themselves as they are released.
    while (!m_attachments.empty()) m_attachments.back()->Release();
    m_algebra.reset();
    m_factory.reset();
}

void FactoryHolder::Detach(Attachment* attachment) {
    m_attachments.erase(std::remove(m_attachments.begin(), m_attachments.end(), attachment), m_attachments.end());
}

KOBWBVariable* FactoryHolder::FindVariable(const std::string& name) {
    KOBWBFactory& factory = Factory();
    if (m_namedVariables != factory.GetNbOfVariables()) {
        m_names.clear();
        for (int i = 0; i < factory.GetNbOfVariables(); ++i) {
            KOBWBVariable* variable = factory.GetVariable(i);
            m_names.emplace(variable->GetName().str(), variable);
        }
        m_namedVariables = factory.GetNbOfVariables();
    }
    const auto found = m_names.find(name);
    return found == m_names.end() ? nullptr : found->second;
}

void FactoryHolder::NoteVariableName(const std::string& name, KOBWBVariable* variable) {
    if (!variable || m_namedVariables != Factory().GetNbOfVariables() - 1) {
        m_namedVariables = -1;
        return;
    }
    m_names.emplace(name, variable);
    m_namedVariables = Factory().GetNbOfVariables();
}

KOBWBPolynomialContext& FactoryHolder::Algebra() {
    KOBWBFactory& factory = Factory();
    if (!m_algebra) m_algebra = std::make_unique<KOBWBPolynomialContext>(factory);
    return *m_algebra;
}

KOBWBExpression* Node::Get() const {
    owner->Factory();
    return expression;
}

KOBWBEquation* EquationRef::Get() const {
    KOBWBEquation* equation = owner->Factory().GetEquationById(id);
    if (!equation) throw py::key_error("equation " + std::to_string(id) + " was removed from its factory");
    return equation;
}

py::object Wrap(const Owner& owner, KOBWBExpression* expression, const char* what) {
    if (!expression) throw std::runtime_error(std::string(what) + ": the library made no node");
    if (expression->GetType() == KOBWBVariableType) return py::cast(VariableNode{{owner, expression}});
    return py::cast(Node{owner, expression});
}

py::object WrapOrNone(const Owner& owner, KOBWBExpression* expression) {
    return expression ? Wrap(owner, expression, "") : py::none();
}

void CheckSameFactory(const Owner& owner, const Node& node) {
    if (node.owner != owner) throw py::value_error("the node belongs to another factory");
    node.Get();
}

py::handle FractionType() {
    // Kept for the life of the process: a static object would be released at exit,
    // after the interpreter.
    static const py::handle type = py::module_::import("fractions").attr("Fraction").cast<py::object>().release();
    return type;
}

namespace {

KOBWBExpression* IntegerConstant(KOBWBFactory& factory, const py::handle& object) {
    int overflow = 0;
    const long long value = PyLong_AsLongLongAndOverflow(object.ptr(), &overflow);
    if (overflow != 0 || value < INT_MIN || value > INT_MAX)
        throw py::value_error("the integer " + py::str(object).cast<std::string>() +
                              " has no exact constant (integers hold 32 bits); pass a float");
    return factory.CreateIntegerConstant(static_cast<int>(value));
}

KOBWBExpression* RealConstant(KOBWBFactory& factory, double value) {
    if (std::isnan(value)) throw py::value_error("NaN is not a constant");
    return factory.CreateRealConstant(value);
}

bool IsFraction(const py::handle& object) {
    
    return py::isinstance(object, FractionType());
}

KOBWBExpression* FractionConstant(KOBWBFactory& factory, const py::handle& object) {
    const py::object numerator = object.attr("numerator");
    const py::object denominator = object.attr("denominator");
    int overflow = 0;
    const long long n = PyLong_AsLongLongAndOverflow(numerator.ptr(), &overflow);
    const long long d = overflow ? 0 : PyLong_AsLongLongAndOverflow(denominator.ptr(), &overflow);
    if (overflow || n < INT_MIN || n > INT_MAX || d > INT_MAX)
        throw py::value_error("the fraction " + py::str(object).cast<std::string>() +
                              " has no exact constant (numerator and denominator hold 32 bits)");
    if (d == 1) return factory.CreateIntegerConstant(static_cast<int>(n));
    return factory.CreateConstant(KOBWBValue(KOBWBCreateFraction(static_cast<int>(n), static_cast<int>(d), 0, 1)));
}

} // namespace

KOBWBExpression* ToOperand(const Owner& owner, const py::handle& object) {
    if (py::isinstance<Node>(object)) {
        const Node& node = object.cast<const Node&>();
        CheckSameFactory(owner, node);
        return node.expression;
    }
    KOBWBFactory& factory = owner->Factory();
    // A bool is an int to Python, but never a number here.
    if (PyBool_Check(object.ptr())) return nullptr;
    if (PyLong_Check(object.ptr())) return IntegerConstant(factory, object);
    if (PyFloat_Check(object.ptr())) return RealConstant(factory, PyFloat_AsDouble(object.ptr()));
    if (IsFraction(object)) return FractionConstant(factory, object);
    return nullptr;
}

KOBWBExpression* ToExpression(const Owner& owner, const py::handle& object, const char* argument) {
    KOBWBExpression* expression = ToOperand(owner, object);
    if (!expression)
        throw py::type_error(std::string(argument) + " must be an Expression or a number, not " +
                             py::str(py::type::of(object)).cast<std::string>());
    return expression;
}

KOBWBVariable* ToVariable(const Owner& owner, const py::handle& object, const char* argument) {
    if (!py::isinstance<VariableNode>(object))
        throw py::type_error(std::string(argument) + " must be a Variable, not " +
                             py::str(py::type::of(object)).cast<std::string>());
    const VariableNode& variable = object.cast<const VariableNode&>();
    CheckSameFactory(owner, variable);
    return variable.Variable();
}

std::string ToText(const py::handle& object, const char* argument) {
    if (!py::isinstance<py::str>(object))
        throw py::type_error(std::string(argument) + " must be a str, not " +
                             py::str(py::type::of(object)).cast<std::string>());
    return object.cast<std::string>();
}

KOBWBEquation* ToEquation(const Owner& owner, const py::handle& object, const char* argument) {
    if (!py::isinstance<EquationRef>(object))
        throw py::type_error(std::string(argument) + " must be an Equation, not " +
                             py::str(py::type::of(object)).cast<std::string>());
    const EquationRef& equation = object.cast<const EquationRef&>();
    if (equation.owner != owner) throw py::value_error("the equation belongs to another factory");
    return equation.Get();
}

Owner OwnerOf(std::initializer_list<py::handle> objects) {
    for (const py::handle& object : objects)
        if (py::isinstance<Node>(object)) return object.cast<const Node&>().owner;
    throw py::type_error("at least one argument must be an Expression (numbers alone have no factory)");
}

KOBWBEquationType RelationFromText(const std::string& text) {
    static const std::pair<const char*, KOBWBEquationType> relations[] = {
        {"=", KOBWBEqEqual},        {"==", KOBWBEqEqual},   {"!=", KOBWBEqNotEqual},
        {"<=", KOBWBEqLessEqual},   {"<", KOBWBEqLess},     {">=", KOBWBEqGreaterEqual},
        {">", KOBWBEqGreater},      {"", KOBWBEqUndefined}, {"minimize", KOBWBEqMinimize},
        {"maximize", KOBWBEqMaximize}};
    for (const auto& relation : relations)
        if (text == relation.first) return relation.second;
    throw py::value_error("unknown relation '" + text + "': use =, !=, <=, <, >=, >, minimize or maximize");
}

} // namespace kobwbx_python
