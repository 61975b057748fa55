#ifndef KOBWBOperator_h
#define KOBWBOperator_h

#include "KOBWBExpression.h"

#include <initializer_list>

// An inner node: an ordered list of children, which the factory owns and which may
// be shared by several parents.
class KOBWBX_API KOBWBOperator : public KOBWBExpression {
public:
    ~KOBWBOperator() override;

    // Same code and children equal one by one; sums, products, minima and maxima
    // match their children in any order (greedily).
    unsigned char IsEqualTo(const KOBWBExpression* other) const override;
    int GetNbOfChildren() const override { return m_children.Size(); }
    KOBWBExpression* GetChild(int i) override;
    const KOBWBExpression* GetChild(int i) const override;
    // 0 and nothing changed for an index outside [0, count) or a null child.
    unsigned char ReplaceChild(int i, KOBWBExpression* child) override;
    KOBWBExpression* IntegrateTable(KOBWBVariable* v, unsigned char& integrable) override;
    unsigned char IsFree(KOBWBVariable* v) const override;
    void FillPresentVariables(unsigned char* mask) const override;
    void ResetBuffer(unsigned char recursive) override;

protected:
    KOBWBOperator(KOBWBFactory& factory, KOBWBExpressionType type, int n, KOBWBExpression** children);
    KOBWBOperator(KOBWBFactory& factory, KOBWBExpressionType type,
                  std::initializer_list<KOBWBExpression*> children);

    // The children in order. Up to two lie inside the node, in the words that hold the
    // address of a larger block otherwise, so that most operators need no block of their
    // own and the list is three words.
    class Children {
    public:
        Children() = default;
        ~Children();
        Children(const Children&) = delete;
        Children& operator=(const Children&) = delete;

        int Size() const { return m_count; }
        KOBWBExpression* operator[](int i) const { return Elements()[i]; }
        KOBWBExpression*& operator[](int i) { return Elements()[i]; }
        // Sets the count, new children null; false when memory runs out.
        bool Resize(int count);
        bool Append(KOBWBExpression* child);
        void RemovePosition(int i);
        // The first position of child, -1 when it is not a child.
        int Locate(const KOBWBExpression* child) const;

    private:
        static constexpr int inlineCapacity = 2;

        bool IsInline() const { return m_capacity <= inlineCapacity; }
        KOBWBExpression* const* Elements() const { return IsInline() ? m_inline : m_block; }
        KOBWBExpression** Elements() { return IsInline() ? m_inline : m_block; }
        bool Reserve(int capacity);

        int m_count = 0;
        int m_capacity = inlineCapacity;
        union {
            KOBWBExpression* m_inline[inlineCapacity] = {nullptr, nullptr};
            KOBWBExpression** m_block;
        };
    };

    Children m_children;
};

#endif
