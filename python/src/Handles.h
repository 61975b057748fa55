#ifndef KobwbxPythonHandles_h
#define KobwbxPythonHandles_h

// What Python holds of the library: a factory shared by every handle made from
// it, so that no node outlives the factory that owns it, and handles to nodes
// and equations that check their factory before each use.

#include "KOBWBx.h"

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace kobwbx_python {

namespace py = pybind11;

// An object made over a factory (a contractor, a transformations operator, an
// algebra context) that must go before the factory does.
class Attachment {
public:
    virtual ~Attachment() = default;
    // Destroys what the attachment made over the factory.
    virtual void Release() = 0;
};

// The factory and what is attached to it. Closing destroys the attachments, then
// the factory; every handle then refuses to work.
class FactoryHolder {
public:
    FactoryHolder();
    ~FactoryHolder();
    FactoryHolder(const FactoryHolder&) = delete;
    FactoryHolder& operator=(const FactoryHolder&) = delete;

    bool IsOpen() const { return m_factory != nullptr; }
    // The factory; a RuntimeError once it is closed.
    KOBWBFactory& Factory() const;
    void Close();

    void Attach(Attachment* attachment) { m_attachments.push_back(attachment); }
    void Detach(Attachment* attachment);

    // The variable of that name, null when none. The factory looks names up in a
    // list it sorts again after each new variable; Python programs make variables
    // by name one after the other, so the names are kept here, and read again when
    // variables were made or renamed elsewhere.
    KOBWBVariable* FindVariable(const std::string& name);
    // A variable named by the binding, or renamed (null: forget the names).
    void NoteVariableName(const std::string& name, KOBWBVariable* variable);

    // The factory's algebra context, made at first use.
    KOBWBPolynomialContext& Algebra();

private:
    std::unique_ptr<KOBWBFactory> m_factory;
    std::unique_ptr<KOBWBPolynomialContext> m_algebra;
    std::vector<Attachment*> m_attachments;
    std::unordered_map<std::string, KOBWBVariable*> m_names;
    // The number of variables m_names was made for; -1 when it must be made again.
    int m_namedVariables = -1;
};

using Owner = std::shared_ptr<FactoryHolder>;

// The Python Factory: a handle on the shared holder.
struct FactoryRef {
    Owner owner;
};

// An expression node (Python Expression, or its subclass Variable for variables).
struct Node {
    Owner owner;
    KOBWBExpression* expression;

    KOBWBExpression* Get() const;
    KOBWBFactory& Factory() const { return owner->Factory(); }
};

struct VariableNode : Node {
    KOBWBVariable* Variable() const { return static_cast<KOBWBVariable*>(Get()); }
};

// An equation, found by its id at each use: transformations remove equations.
struct EquationRef {
    Owner owner;
    int id;

    // The equation; a LookupError once it was removed.
    KOBWBEquation* Get() const;
};

// left relation right, made by the comparison operators and added to a factory
// by Factory.add. The sides stay Python objects until then.
struct Relation {
    py::object left;
    KOBWBEquationType type;
    py::object right;
};

// The Python object of a node: a Variable for a variable, an Expression else.
// A null node raises a RuntimeError naming what failed.
py::object Wrap(const Owner& owner, KOBWBExpression* expression, const char* what);
// The same, None for null.
py::object WrapOrNone(const Owner& owner, KOBWBExpression* expression);

// The node of a Python operand in the owner's factory: an Expression of that
// factory, or a Python number (int, float, fractions.Fraction) made a constant.
// Null when the object is of another type; a ValueError for a node of another
// factory or a number that has no constant (NaN, an int beyond 32 bits).
KOBWBExpression* ToOperand(const Owner& owner, const py::handle& object);
// The same, raising a TypeError naming the argument for other types.
KOBWBExpression* ToExpression(const Owner& owner, const py::handle& object, const char* argument);
// The variable of a Python object of the owner's factory; TypeError or ValueError else.
KOBWBVariable* ToVariable(const Owner& owner, const py::handle& object, const char* argument);
// The text of a Python str; a TypeError naming the argument for other objects.
std::string ToText(const py::handle& object, const char* argument);
// The equation of a Python Equation of the owner's factory; TypeError or ValueError else.
KOBWBEquation* ToEquation(const Owner& owner, const py::handle& object, const char* argument);
// The factory of the first Expression among the objects; a TypeError when none is.
Owner OwnerOf(std::initializer_list<py::handle> objects);
// Checks that node belongs to owner's factory.
void CheckSameFactory(const Owner& owner, const Node& node);

// The class fractions.Fraction.
py::handle FractionType();

// The relation's text ("=", "<=", ...) and back; a ValueError for unknown text.
KOBWBEquationType RelationFromText(const std::string& text);

} // namespace kobwbx_python

#endif
