#include "KOBWBModelHomogeneity.h"

#include "KOBLVRGlobalParameters.h"
#include "KOBLVRStream.h"
#include "KOBWBEqNode.h"
#include "KOBWBModel.h"
#include "KOBWBModelStatus.h"
#include "KOBWBNodeText.h"
#include "KOBWBOpNode.h"
#include "KOBWBPrefetch.h"
#include "KOBWBSmallStack.h"
#include "KOBWBUnitClass.h"

#include <cstring>

namespace {

// Classes are handled as texts that outlive the walk: the constants of
// KOBWBUnitClass.h, or the unit class text of a leaf of the tree.
typedef const char* Class;

// The class names differ from their first or second character, so most
// comparisons end without calling strcmp.
bool Is(Class c, const char* name) {
    return c[0] == name[0] && std::strcmp(c, name) == 0;
}

bool IsLengthOrAngle(Class c) {
    return Is(c, KOBWBUnitClassDistance) || Is(c, KOBWBUnitClassAngle);
}

// Writes one rule line to the trace when there is one, and answers the class.
Class Rule(KOBLVRStream* trace, const char* text, Class result, bool withClass = false) {
    if (trace) {
        *trace << text;
        if (withClass) *trace << result;
        *trace << lvrendl;
    }
    return result;
}

Class SumRule(KOBLVRStream* trace, Class c1, Class c2) {
    if (Is(c1, KOBWBUnitClassInhomogeneous) || Is(c2, KOBWBUnitClassInhomogeneous))
        return Rule(trace, " for Sum et Minus, if one child is Inhomogeneous  => Inhomogeneous",
                    KOBWBUnitClassInhomogeneous);
    if (Is(c1, KOBWBUnitClassUnsolved) || Is(c2, KOBWBUnitClassUnsolved))
        return Rule(trace, " for Sum et Minus, if one child is Unsolved => Unsolved",
                    KOBWBUnitClassUnsolved);
    if (Is(c1, KOBWBUnitClassAmbiguous) || Is(c1, KOBWBUnitClassNone))
        return Rule(trace, " for Sum et Minus, as child1 is Ambiguous or None => Other type =", c2,
                    true);
    if (Is(c2, KOBWBUnitClassAmbiguous) || Is(c2, KOBWBUnitClassNone))
        return Rule(trace, " for Sum et Minus, as child2 is Ambiguous or None => Other type =", c1,
                    true);
    if (Is(c1, KOBWBUnitClassDistance) && Is(c2, KOBWBUnitClassDistance))
        return Rule(trace, " for Sum et Minus, the 2 children are Distances => Distance",
                    KOBWBUnitClassDistance);
    if (Is(c1, KOBWBUnitClassAngle) && Is(c2, KOBWBUnitClassAngle))
        return Rule(trace, " for Sum et Minus, the 2 children are Angles => Angle",
                    KOBWBUnitClassAngle);
    return Rule(trace, " for Sum et Minus, default case => Inhomogeneous",
                KOBWBUnitClassInhomogeneous);
}

Class ProductRule(KOBLVRStream* trace, Class c1, Class c2) {
    if (Is(c1, KOBWBUnitClassNone))
        return Rule(trace, " for Product, as child1 is  None => Other type =", c2, true);
    if (Is(c2, KOBWBUnitClassNone))
        return Rule(trace, " for Product, as child2 is  None => Other type =", c1, true);
    return Rule(trace, " default case for Product => Unsolved", KOBWBUnitClassUnsolved);
}

Class QuotientRule(KOBLVRStream* trace, Class c1, Class c2, const KOBWBNode& child1,
                   const KOBWBNode& child2) {
    const bool constant1 = child1.IsConstant();
    const bool constant2 = child2.IsConstant();
    if (Is(c1, KOBWBUnitClassInhomogeneous) || Is(c2, KOBWBUnitClassInhomogeneous))
        return Rule(trace, " for Quotient, if one child is Inhomogeneous  => Inhomogeneous",
                    KOBWBUnitClassInhomogeneous);
    if (Is(c1, KOBWBUnitClassUnsolved) || Is(c2, KOBWBUnitClassUnsolved))
        return Rule(trace, " for Quotient, if one child is Unsolved  => Unsolved",
                    KOBWBUnitClassUnsolved);
    if (Is(c1, KOBWBUnitClassAmbiguous)) {
        if (Is(c2, KOBWBUnitClassNone) && constant2)
            return Rule(trace,
                        " for Quotient, as child1 is Ambiguous and child2 is None => Ambiguous",
                        KOBWBUnitClassAmbiguous);
        return Rule(trace, " for Quotient, as child1 is Ambiguous and child2 is not a cst => None",
                    KOBWBUnitClassNone);
    }
    if (Is(c1, KOBWBUnitClassNone) && (Is(c2, KOBWBUnitClassAmbiguous) || IsLengthOrAngle(c2))) {
        if (constant1)
            return Rule(trace,
                        " for Quotient, as child1 is a cst and child2 is Ambiguous or a distance "
                        "or an Angle => Unsolved",
                        KOBWBUnitClassUnsolved);
        return Rule(trace,
                    " for Quotient, as child1 is None (but not a cst) and child2 is Ambiguous or "
                    "a distance or an Angle => UnsolveNoned",
                    KOBWBUnitClassNone);
    }
    if (Is(c1, KOBWBUnitClassNone) && Is(c2, KOBWBUnitClassNone)) {
        if (constant1 && !constant2)
            return Rule(trace,
                        " for Quotient, as child1 is a cst and child2 is not a cst => Unsolved",
                        KOBWBUnitClassUnsolved);
        return Rule(trace,
                    " for Quotient, as child 2 is a cst or child1 is None but not a cst => none",
                    KOBWBUnitClassNone);
    }
    if (!Is(c1, KOBWBUnitClassNone) && Is(c2, KOBWBUnitClassAmbiguous))
        return Rule(trace, " for Quotient, as child1 is  notNone and child2 is Ambiguous => None",
                    KOBWBUnitClassNone);
    if (Is(c1, KOBWBUnitClassDistance) && Is(c2, KOBWBUnitClassDistance))
        return Rule(trace, " for Quotient, the 2 children are Distances => None",
                    KOBWBUnitClassNone);
    if (Is(c1, KOBWBUnitClassAngle) && Is(c2, KOBWBUnitClassAngle))
        return Rule(trace, " for Quotient, the 2 children are Angles => None", KOBWBUnitClassNone);
    if (Is(c1, KOBWBUnitClassDistance) && Is(c2, KOBWBUnitClassNone)) {
        if (constant2)
            return Rule(trace, " for Quotient, as child 1 a distance and child a cst => Distance",
                        KOBWBUnitClassDistance);
        return Rule(trace,
                    " for Quotient, as child 1 a distance and child is None (but not a Cst)=> "
                    "Ambiguous",
                    KOBWBUnitClassAmbiguous);
    }
    if (Is(c1, KOBWBUnitClassAngle) && Is(c2, KOBWBUnitClassNone)) {
        if (constant2)
            return Rule(trace, " for Quotient, as child 1 an Angle and child a cst => Angle",
                        KOBWBUnitClassAngle);
        return Rule(trace,
                    " for Quotient, as child 1 an Angle and child is None (but not a Cst)=> "
                    "Ambiguous",
                    KOBWBUnitClassAmbiguous);
    }
    if (IsLengthOrAngle(c1))
        return Rule(trace,
                    " for Quotient, as the child1 is Distance or Angle but not the child 2 => "
                    "Unsolved",
                    KOBWBUnitClassUnsolved);
    return Rule(trace, " for Quotient, default case  => Inhomogeneous",
                KOBWBUnitClassInhomogeneous);
}

Class OperatorRule(KOBLVRStream* trace, const KOBWBOpNode& node, Class c1, Class c2) {
    if (trace) {
        *trace << " Homogeneity Child1 :" << c1 << lvrendl;
        *trace << " Homogeneity Child2 :" << c2 << lvrendl;
    }
    switch (node.GetType()) {
    case KOBWBSumType:
    case KOBWBMinusType:
        return SumRule(trace, c1, c2);
    case KOBWBProductType:
        return ProductRule(trace, c1, c2);
    case KOBWBQuotientType:
        return QuotientRule(trace, c1, c2, *node.GetChild(1), *node.GetChild(2));
    default:
        return Rule(trace, " default case for the main part of the operators => Unsolved",
                    KOBWBUnitClassUnsolved);
    }
}

// A node whose class is being computed: its children are taken one after the
// other, their classes waiting on the result stack.
struct Frame {
    KOBWBNode* node;
    int nextChild;
};

// The class of a subtree, as FillHomogeneity gives it.
Class ClassOf(KOBWBNode* root) {
    KOBLVRStream* trace = GetGlobalParameters().GetTraceStream(1);
    // Iterative, so that a tree as deep as a very long sum does not exhaust the
    // call stack.
    KOBWBSmallStack<Frame, 32> frames;
    KOBWBSmallStack<Class, 32> classes;
    frames.push_back(Frame{root, 0});
    while (!frames.empty()) {
        const Frame frame = frames.back();
        KOBWBNode* node = frame.node;
        if (frame.nextChild == 0) {
            if (trace) *trace << " FillHomogeneity  :" << KOBWBNodeText(node);
            Class leafClass = nullptr;
            if (!node)
                leafClass = KOBWBUnitClassInhomogeneous;
            else if (node->GetNodeType() != KOBWBOpNodeType)
                leafClass = node->GetUnitType().str();
            if (leafClass) {
                if (trace) *trace << " => " << leafClass << lvrendl;
                classes.push_back(leafClass);
                frames.pop_back();
                continue;
            }
            const KOBWBOpNode* op = static_cast<const KOBWBOpNode*>(node);
            if (trace)
                *trace << lvrendl << " Homogeneity OpType =" << static_cast<int>(op->GetType())
                       << lvrendl;
            if (op->GetNbOfChildren() != 2) {
                classes.push_back(KOBWBUnitClassUnsolved);
                frames.pop_back();
                continue;
            }
        }
        const KOBWBOpNode* op = static_cast<const KOBWBOpNode*>(node);
        if (frame.nextChild < 2) {
            frames.back().nextChild = frame.nextChild + 1;
            frames.push_back(Frame{op->GetChild(frame.nextChild + 1), 0});
            continue;
        }
        const Class c2 = classes.back();
        classes.pop_back();
        const Class c1 = classes.back();
        classes.back() = OperatorRule(trace, *op, c1, c2);
        frames.pop_back();
    }
    return classes.back();
}

} // namespace

KOBLVRString KOBWBModelHomogeneity::FillHomogeneity(KOBWBNode* root) {
    return KOBLVRString(ClassOf(root));
}

long KOBWBModelHomogeneity::CheckHomogeneity(KOBWBEqNode& equation) {
    KOBWBNode* left = equation.GetLeftTerm();
    KOBWBNode* right = equation.GetRightTerm();
    if (!left && !right) return KOBWBModelFailure;
    KOBWBPrefetchNextEquation(&equation);
    const Class t1 = ClassOf(left);
    const Class t2 = ClassOf(right);
    const bool rightConstant = right && right->IsConstant();
    const bool leftConstant = left && left->IsConstant();
    if (Is(t1, KOBWBUnitClassInhomogeneous) || Is(t1, KOBWBUnitClassUnsolved) ||
        Is(t2, KOBWBUnitClassInhomogeneous) || Is(t2, KOBWBUnitClassUnsolved))
        return 1;
    if ((Is(t1, KOBWBUnitClassDistance) && Is(t2, KOBWBUnitClassAngle)) ||
        (Is(t1, KOBWBUnitClassAngle) && Is(t2, KOBWBUnitClassDistance)))
        return 1;
    // A length or an angle may equal a bare number, not a dimensionless expression.
    if (IsLengthOrAngle(t1) && Is(t2, KOBWBUnitClassNone) && !rightConstant) return 1;
    if (Is(t1, KOBWBUnitClassNone) && Is(t2, KOBWBUnitClassDistance) && leftConstant) return 1;
    if (Is(t1, KOBWBUnitClassNone) && Is(t2, KOBWBUnitClassAngle)) return 1;
    return 0;
}

long KOBWBModelHomogeneity::CheckHomogeneity(KOBWBModel& model) {
    for (KOBWBEqNode* equation = model.GetFirstEquation(); equation;
         equation = model.GetNextEquation(equation))
        if (CheckHomogeneity(*equation) == 1) return 1;
    return 0;
}
