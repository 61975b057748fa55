#ifndef KOBWBEquation_h
#define KOBWBEquation_h

#include "KOBLVRIntArray.h"
#include "KOBLVRString.h"
#include "KOBWBDataLists.h"
#include "KOBWBEquationType.h"

class KOBWBExpression;
class KOBWBFactory;

// An equation of a factory: its root stands in the relation of its type to 0.
// Equations are linked in creation order; the root is not owned. Only the factory
// makes and destroys equations.
class KOBWBX_API KOBWBEquation final {
public:
    KOBWBEquation(KOBWBFactory* factory, KOBWBExpression* root, KOBWBEquationType type, int id);
    // Relinks the previous and the next equation to each other.
    ~KOBWBEquation();
    KOBWBEquation(const KOBWBEquation&) = delete;
    KOBWBEquation& operator=(const KOBWBEquation&) = delete;

    KOBWBFactory* GetFactory() const { return m_factory; }
    KOBWBExpression* GetRoot() const { return m_root; }
    void SetRoot(KOBWBExpression* root);
    KOBWBEquationType GetType() const { return m_type; }
    int GetId() const { return m_id; }
    KOBWBEquation* GetNext() const { return m_next; }
    KOBWBEquation* GetPrev() const { return m_prev; }
    // The name; an unnamed equation is first named "eq" followed by its id.
    const KOBLVRString& GetName();
    virtual void SetName(const KOBLVRString& name);

    void GetTheoreticalVarList(KOBLVRIntArray* indices) const;
    void SetTheoreticalVarList(KOBLVRIntArray* indices);
    // Fills the list with the variables of the root in index order; 0 when there
    // is no root or the factory has no variables.
    int FindPresentVariables(KOBLVRListPKOBWBVariable& variables) const;
    // 1 when every variable of the root is in the theoretical list (or that list
    // is empty).
    unsigned char AreVarConsistent() const;
    // Replaces the root by a deep copy made in the same factory.
    void DuplicateRoot();

private:
    friend class KOBWBFactory;

    KOBWBFactory* m_factory;
    KOBWBExpression* m_root;
    KOBWBEquationType m_type;
    int m_id;
    KOBLVRString m_name;
    KOBLVRIntArray m_theoreticalVariables;
    KOBWBEquation* m_prev = nullptr;
    KOBWBEquation* m_next = nullptr;
};

#endif
