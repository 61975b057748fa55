#ifndef KOBLVRExpressionTerm_h
#define KOBLVRExpressionTerm_h

#include "KOBLVRString.h"

#include <memory>
#include <vector>

class KOBLVRStream;

enum KOBLVRExpressionType {
    KOBLVRTermNumber = 0,
    KOBLVRTermName,
    KOBLVRTermSum,
    KOBLVRTermDifference,
    KOBLVRTermProduct,
    KOBLVRTermQuotient,
    KOBLVRTermPower,
    KOBLVRTermOpposite,
    KOBLVRTermFunction
};

// A generic expression tree: an operator kind with children, a number or a name.
class KOBWBX_API KOBLVRExpressionTerm {
public:
    static KOBLVRExpressionTerm* Create(KOBLVRExpressionType type);
    static KOBLVRExpressionTerm* Create(double number);
    static KOBLVRExpressionTerm* Create(const KOBLVRString& name);
    // Frees the term with its children and nulls the pointer.
    static void Destroy(KOBLVRExpressionTerm*& term);

    KOBLVRExpressionType GetType() const { return m_type; }
    double GetNumber() const { return m_number; }
    const KOBLVRString& GetName() const { return m_name; }
    int GetNbOfChildren() const { return static_cast<int>(m_children.size()); }
    KOBLVRExpressionTerm* GetChild(int i) const;
    // Takes ownership of the child; null is ignored.
    void AddChild(KOBLVRExpressionTerm* child);

    // Prints in infix form; with parenthesised, every operation is enclosed.
    void Print(KOBLVRStream& stream, bool parenthesised) const;

private:
    explicit KOBLVRExpressionTerm(KOBLVRExpressionType type) : m_type(type) {}

    KOBLVRExpressionType m_type;
    double m_number = 0.0;
    KOBLVRString m_name;
    std::vector<std::unique_ptr<KOBLVRExpressionTerm>> m_children;
};

#endif
