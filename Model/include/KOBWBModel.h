#ifndef KOBWBModel_h
#define KOBWBModel_h

#include "KOBLVRIntArray.h"
#include "KOBWBComparisonType.h"
#include "KOBWBDataLists.h"
#include "KOBWBEquationType.h"
#include "KOBWBExpressionType.h"
#include "KOBWBLocation.h"
#include "KOBWBModelLists.h"

#include <cstddef>
#include <memory>
#include <vector>

class KOBWBConstNode;
class KOBWBEqNode;
class KOBWBFactory;
class KOBWBNode;
class KOBWBNodeStore;
class KOBWBOpNode;
class KOBWBValue;
class KOBWBVarNode;
class KOBWBVariableIndex;
class KOBWBVisitor;

// A parsed system of equations: a doubly linked list of equation nodes over
// constant, variable and operator nodes. The model owns every node created
// through it, attached to an equation or not, and frees them all when it is
// destroyed. Each occurrence of a variable is a node of its own; the occurrences
// of one name share a name index (0, 1, ... in order of first appearance).
class KOBWBX_API KOBWBModel {
public:
    explicit KOBWBModel(int level = 0);
    ~KOBWBModel();
    KOBWBModel(const KOBWBModel&) = delete;
    KOBWBModel& operator=(const KOBWBModel&) = delete;

    int GetLevel() const { return m_level; }
    // Calls the visitor's VisitModel.
    long Accept(KOBWBVisitor& visitor);

    // Creation: each returns the new node, or null when it could not be built.
    KOBWBConstNode* CreateConstant(const KOBWBLocation& location, const KOBWBValue& value);
    KOBWBConstNode* CreateConstant(const KOBWBLocation& location, const KOBWBValue& value,
                                   const KOBWBLocation& unitLocation, const KOBLVRString& unit);
    KOBWBVarNode* CreateVariable(const KOBWBLocation& location, const KOBLVRString& name);
    KOBWBVarNode* CreateVariable(const KOBWBLocation& location, const char* name);
    KOBWBOpNode* CreateOperator(const KOBWBLocation& location, KOBWBExpressionType type,
                                const KOBLVRListPKOBWBNode& children);
    KOBWBOpNode* CreateOperator(const KOBWBLocation& location, KOBWBExpressionType type,
                                KOBWBComparisonType comparison,
                                const KOBLVRListPKOBWBNode& children);
    // The same with the children given as an array of count nodes.
    KOBWBOpNode* CreateOperator(const KOBWBLocation& location, KOBWBExpressionType type,
                                KOBWBComparisonType comparison, int count,
                                KOBWBNode* const* children);
    // A call of blackBox, which the model adds to its declared black boxes.
    KOBWBOpNode* DeclareBlackBox(const KOBWBLocation& location, KOBWBBlackBox* blackBox,
                                 const KOBLVRListPKOBWBNode& arguments);
    // A call of the declared black box of that name; when none is declared, a
    // call that only keeps the name (GetBlackBox() is null), which the model
    // check reports.
    KOBWBOpNode* GetBBxOp(const KOBWBLocation& location, const KOBLVRString& name,
                          const KOBLVRListPKOBWBNode& arguments);
    // Appends an equation; it receives the next id (ids start at 1). Fails
    // without a left term.
    KOBWBEqNode* AddEquation(const KOBWBLocation& location, KOBWBNode* left, KOBWBEquationType type,
                             KOBWBNode* right);
    // Appends an equation made of a single term, of undefined type.
    KOBWBEqNode* AddEquation(KOBWBNode* term);

    KOBWBEqNode* GetFirstEquation() const { return m_first; }
    KOBWBEqNode* GetLastEquation() const { return m_last; }
    KOBWBEqNode* GetNextEquation(const KOBWBEqNode* equation) const;
    KOBWBEqNode* GetPrevEquation(const KOBWBEqNode* equation) const;
    KOBWBEqNode* GetEquationById(int id) const;
    int GetNbOfEquations() const { return m_nbOfEquations; }
    // Occurrences of variables.
    int GetNbOfVariables() const;
    // Distinct names with at least one occurrence.
    int GetNbOfDifferentVariables() const;
    // The first occurrence of the name, or null.
    KOBWBVarNode* GetVariable(const KOBLVRString& name) const;
    KOBWBVarNode* GetVariable(const char* name) const;
    // The occurrence of the name written at that place, or null.
    KOBWBVarNode* GetVariable(const KOBLVRString& name, const KOBWBLocation& location) const;
    KOBWBVarNode* GetVariable(const char* name, const KOBWBLocation& location) const;
    // Appends every occurrence of the name; returns their number.
    int GetVariable(const KOBLVRString& name, KOBLVRListPKOBWBVarNode& occurrences) const;
    // Name indices given so far (names whose occurrences were all removed keep
    // their index).
    int GetNbOfVariableNames() const;
    // Appends every occurrence of the name with that index; returns their number.
    int GetOccurrences(int nameIndex, KOBLVRListPKOBWBVarNode& occurrences) const;
    // Appends every occurrence of every variable, in creation order; returns
    // their number.
    int GetVariables(KOBLVRListPKOBWBVarNode& occurrences) const;
    // Sets on every occurrence of a variable the unit class of its name:
    // classes[i] for the name of index i where that is not null (the model check
    // gives the classes it infers).
    void SetUnitTypes(const std::vector<const KOBLVRString*>& classes);
    // A hint that the name will soon be looked up (the parser gives the names of
    // the statement ahead): starts loading the part of the name table the lookup
    // needs, which a large model would otherwise wait for. Changes nothing.
    void ForeseeVariable(const char* name, size_t length) const;
    // Appends every declared black box.
    void GetBlackBoxes(KOBLVRListPKOBWBBlackBox& blackBoxes) const;

    // Conversion into a factory. The first count entries of equationIds (every
    // entry when count is negative or larger) name model equations; each is
    // replaced by the id of the factory equation made from it, or -1 when the
    // equation is missing or has a node without a factory counterpart (an
    // unknown unit or function, a call of an unknown black box, a wrong number
    // of arguments). Each distinct variable name becomes one factory variable of
    // that name: the pairs already in variableNodes and factoryVariables (a name's
    // first occurrence, its factory variable, at the same position) are reused,
    // and every new pair is appended. Constants with units are converted into the
    // factory's millimetres and radians. Returns the number of equations made.
    long FillFactory(KOBWBFactory& factory, KOBLVRIntArray& equationIds, int count,
                     KOBLVRListPKOBWBVarNode& variableNodes, KOBLVRListPKOBWBVariable& factoryVariables);

    // Unlinks and frees the equation and its terms, and nulls the pointer; their
    // memory goes back with the model's, nodes being built in blocks. Fails for
    // an equation that is not in this model.
    long RemoveEquation(KOBWBEqNode*& equation);

private:
    // Hands a node that New built (status KOBWBModelOk) to the store; null when
    // building failed.
    template <class T> T* Own(long status, T* node);
    // Room for a new node in the model's store.
    void* Room(size_t size);
    void FreeSubtree(KOBWBNode* root);

    int m_level;
    KOBWBEqNode* m_first = nullptr;
    KOBWBEqNode* m_last = nullptr;
    int m_nbOfEquations = 0;
    int m_nextId = 1;
    // The equations in id order, for GetEquationById.
    std::vector<KOBWBEqNode*> m_equationsById;
    // Declared before the nodes, which go first.
    std::unique_ptr<KOBWBVariableIndex> m_variables;
    std::unique_ptr<KOBWBNodeStore> m_nodes;
    KOBLVRListPKOBWBBlackBox m_blackBoxes;
};

#endif
