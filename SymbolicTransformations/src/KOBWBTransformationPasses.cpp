#include "KOBWBTransformationPasses.h"

#include "KOBWBSymbolicTransformations.h"

#include "KOBWBEquations.h"

#include "KOBLVRGlobalParameters.h"

#include "KOBLVRStream.h"
#include "KOBWBComparisons.h"
#include "KOBWBConstant.h"
#include "KOBWBEquation.h"
#include "KOBWBFactory.h"
#include "KOBWBPolynomialContext.h"
#include "KOBWBVariable.h"

#include <cstdio>
#include <unordered_set>
#include <vector>

namespace kobwb {
namespace {

bool IsAssociative(KOBWBExpressionType type) {
    return type == KOBWBSumType || type == KOBWBProductType || type == KOBWBMinType || type == KOBWBMaxType;
}

// The canonical form of an exact fraction constant; null for other nodes.
KOBWBExpression* CanonicalConstant(KOBWBFactory& factory, KOBWBExpression* node) {
    if (node->GetType() != KOBWBConstantType || !node->GetExprValue().IsAFraction()) return nullptr;
    KOBWBValue value(node->GetExprValue());
    value.SimplifyFraction(false);
    if (!value.IsAFraction()) return factory.CreateConstant(value);
    const KOBWBFraction f = value.GetAsFraction();
    const int n = f.numerator, d = f.denominator, k = f.powerOfPi;
    if (n == 1 && d == 180 && k == 1) return factory.CreateConstantDTOR();
    if (n == 180 && d == 1 && k == -1) return factory.CreateConstantRTOD();
    KOBWBExpression* pi = nullptr;
    if (k != 0) {
        pi = factory.CreateConstantPi();
        if (k > 1 || k < -1) pi = factory.CreatePower(pi, k > 0 ? k : -k);
    }
    KOBWBExpression* numerator = k > 0 && n == 1 ? pi : factory.CreateIntegerConstant(n);
    if (k > 0 && n != 1) numerator = factory.CreateProduct(numerator, pi);
    if (d == 1) return k >= 0 ? numerator : factory.CreateQuotient(numerator, pi);
    KOBWBExpression* denominator = factory.CreateIntegerConstant(d);
    if (k < 0) denominator = factory.CreateProduct(denominator, pi);
    return factory.CreateQuotient(numerator, denominator);
}

} // namespace

void FlattenAssociative(KOBWBExpression* root) {
    PostOrder(root, [](KOBWBExpression* node) {
        const KOBWBExpressionType type = node->GetType();
        if (!IsAssociative(type)) return;
        for (int i = node->GetNbOfChildren() - 1; i >= 0; --i) {
            KOBWBExpression* child = node->GetChild(i);
            if (!child || child->GetType() != type || child == node) continue;
            node->RemoveChild(i);
            for (int j = 0; j < child->GetNbOfChildren(); ++j) node->AddChild(child->GetChild(j));
        }
    });
}

void BinarizeOperators(KOBWBFactory& factory, KOBWBExpression* root) {
    PostOrder(root, [&factory](KOBWBExpression* node) {
        const KOBWBExpressionType type = node->GetType();
        if (!IsAssociative(type)) return;
        while (node->GetNbOfChildren() >= 3) {
            KOBWBExpression* pair[] = {node->GetChild(0), node->GetChild(1)};
            KOBWBExpression* joined = factory.CreateAlgebraicOperator(type, 2, pair);
            if (!joined || !node->RemoveChild(0)) return;
            node->ReplaceChild(0, joined);
        }
    });
}

KOBWBExpression* CanonicalizeConstants(KOBWBFactory& factory, KOBWBExpression* root) {
    if (!root) return nullptr;
    if (KOBWBExpression* constant = CanonicalConstant(factory, root)) return constant;
    PostOrder(root, [&factory](KOBWBExpression* node) {
        for (int i = 0; i < node->GetNbOfChildren(); ++i) {
            KOBWBExpression* child = node->GetChild(i);
            if (KOBWBExpression* constant = child ? CanonicalConstant(factory, child) : nullptr)
                node->ReplaceChild(i, constant);
        }
    });
    return root;
}

namespace {

// SimplifyRoot for a root already read as polynomial; readsBack tells whether it
// reads back exactly (KOBWBPolynomialContext::ReadsBackExactly), asked only with unwritten.
KOBWBExpression* SimplifyRead(KOBWBPolynomialContext& context, KOBWBEquation& equation, KOBWBPolynomial polynomial,
                              UnwrittenRoots* unwritten, bool readsBack) {
    // The zero polynomial is written as the integer constant 0, and only it.
    if (polynomial.IsZero() && equation.GetType() == KOBWBEqEqual) return nullptr;
    if (unwritten && readsBack) {
        unwritten->emplace_back(equation.GetId(), std::move(polynomial));
        return equation.GetRoot();
    }
    KOBWBExpression* simplified = context.ToExpression(polynomial);
    return simplified ? simplified : equation.GetRoot();
}

} // namespace

KOBWBExpression* SimplifyRoot(KOBWBPolynomialContext& context, KOBWBEquation& equation, UnwrittenRoots* unwritten) {
    KOBWBPolynomial polynomial;
    if (!context.ToPolynomial(equation.GetRoot(), polynomial)) return equation.GetRoot();
    const bool readsBack = unwritten && context.ReadsBackExactly(polynomial);
    return SimplifyRead(context, equation, std::move(polynomial), unwritten, readsBack);
}

bool CanHold(const KOBWBEnvironment& environment, KOBWBEquation& equation, bool constantRoot) {
    KOBWBExpression* root = equation.GetRoot();
    const KOBWBEquationType type = equation.GetType();
    if (!root || !constantRoot || type < KOBWBEqNotEqual || type > KOBWBEqGreater) return true;
    KOBWBValue value;
    root->Eval(value);
    const KOBWBValue zero(0);
    KOBWBValue verdict;
    switch (type) {
    case KOBWBEqNotEqual: verdict = KOBWBNotEqual(environment, value, zero); break;
    case KOBWBEqLessEqual: verdict = KOBWBLessEqual(environment, value, zero); break;
    case KOBWBEqLess: verdict = KOBWBNot(KOBWBLessEqual(environment, zero, value)); break;
    case KOBWBEqGreaterEqual: verdict = KOBWBLessEqual(environment, zero, value); break;
    default: verdict = KOBWBNot(KOBWBLessEqual(environment, value, zero)); break;
    }
    return verdict.GetAsBoolean() == KOBWBTrue;
}

namespace {

const char* Head(KOBWBExpressionType type) {
    switch (type) {
    case KOBWBSumType: return "+(";
    case KOBWBProductType: return "*(";
    case KOBWBQuotientType: return "/(";
    case KOBWBPowerType: return "^(";
    case KOBWBLnType: return "Ln(";
    case KOBWBExpType: return "Exp(";
    case KOBWBSinType: return "Sin(";
    case KOBWBCosType: return "Cos(";
    case KOBWBTanType: return "Tan(";
    default: return "?(";
    }
}

std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

std::string Leaf(const KOBWBExpression* node) {
    if (node->GetType() == KOBWBVariableType)
        return const_cast<KOBWBVariable*>(static_cast<const KOBWBVariable*>(node))->GetName().str();
    const KOBWBValue& value = node->GetExprValue();
    if (value.IsAFraction()) {
        const KOBWBFraction f = value.GetAsFraction();
        std::string text = "{" + std::to_string(f.numerator) + "/" + std::to_string(f.denominator);
        if (f.powerOfPi != 0) text += " * Pi^" + std::to_string(f.powerOfPi);
        return text + "}";
    }
    switch (value.GetType()) {
    case KOBWBIntegerValue:
    case KOBWBRealValue: return Number(value.GetAsDouble());
    case KOBWBIntegerIntervalValue:
    case KOBWBRealIntervalValue: {
        const KOBWBRealInterval interval = value.GetAsRealInterval();
        return "[" + Number(interval.lower) + ", " + Number(interval.upper) + "]";
    }
    default: return "??";
    }
}

constexpr size_t maxTrace = 1000000;

} // namespace

std::string TraceExpression(const KOBWBExpression* expression) {
    std::string text;
    // Pending pieces: a node to write, or a literal text (node null).
    struct Piece {
        const KOBWBExpression* node;
        const char* literal;
    };
    std::vector<Piece> pending{{expression, "NULL"}};
    while (!pending.empty() && text.size() <= maxTrace) {
        const Piece piece = pending.back();
        pending.pop_back();
        if (!piece.node) {
            text += piece.literal;
            continue;
        }
        const int count = piece.node->GetNbOfChildren();
        if (piece.node->GetType() == KOBWBVariableType || piece.node->GetType() == KOBWBConstantType) {
            text += Leaf(piece.node);
            continue;
        }
        text += Head(piece.node->GetType());
        pending.push_back({nullptr, ")"});
        for (int i = count - 1; i >= 0; --i) {
            pending.push_back({piece.node->GetChild(i), "NULL"});
            if (i > 0) pending.push_back({nullptr, ", "});
        }
    }
    if (text.size() > maxTrace) text += "...";
    return text;
}

void TraceSystem(KOBLVRStream& stream, KOBWBFactory& factory, const std::vector<KOBWBExpression*>& variableExpressions) {
    int index = 0;
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = equation->GetNext())
        stream << "Eq[" << index++ << "] = " << TraceExpression(equation->GetRoot()).c_str() << lvrendl;
    const int count = static_cast<int>(variableExpressions.size());
    if (count <= 0 || count != factory.GetNbOfVariables()) return;
    for (int i = 0; i < count; ++i)
        stream << "Var[" << i << "] = " << TraceExpression(variableExpressions[static_cast<size_t>(i)]).c_str() << lvrendl;
}

namespace {

// Whether flattening would merge a min or a max into its parent. Reading collects
// nested sums and products anyway, but keeps each min and max an atom over its
// children: only their flattening changes what a root reads as.
bool FlattensMinOrMax(KOBWBExpression* root) {
    bool merges = false;
    PostOrder(root, [&merges](KOBWBExpression* node) {
        const KOBWBExpressionType type = node->GetType();
        if (merges || (type != KOBWBMinType && type != KOBWBMaxType)) return;
        for (int i = 0; i < node->GetNbOfChildren() && !merges; ++i)
            merges = node->GetChild(i) && node->GetChild(i)->GetType() == type;
    });
    return merges;
}

// The root flattened in place, traced before and after when trace is not null.
KOBWBExpression* Flattened(KOBWBExpression* root, KOBLVRStream* trace) {
    if (trace) *trace << "Before: " << TraceExpression(root).c_str() << lvrendl;
    FlattenAssociative(root);
    if (trace) *trace << "After : " << TraceExpression(root).c_str() << lvrendl;
    return root;
}

// What simplifying did with an equation.
enum class Outcome { Stayed, Simplified, Removed };

// What SimplifyRoot gave, applied: the simplified root set and marked, or nothing when
// the polynomial went to the unwritten ones (of which there were before), or the
// equation removed (simplified null).
Outcome Apply(KOBWBFactory& factory, const EquationPass& pass, KOBWBEquation& equation,
              const std::function<void(KOBWBExpression*)>& mark, KOBWBExpression* simplified, size_t before) {
    if (!simplified) {
        KOBWBEquation* removed = &equation;
        factory.RemoveEquation(removed);
        return Outcome::Removed;
    }
    // A root left unwritten is marked when it is written.
    if (pass.unwritten && pass.unwritten->size() > before) return Outcome::Simplified;
    mark(simplified);
    equation.SetRoot(simplified);
    return Outcome::Simplified;
}

// Simplifies the equation from its own tree, read as it stands: a root that reads
// as a polynomial without opaque atoms is written anew (in temporary storage, from
// new nodes only), so it needs neither a duplicate nor flattening. Stayed, with
// nothing changed, for a root that stays.
Outcome SimplifyOwnTree(KOBWBFactory& factory, KOBWBPolynomialContext& context, const EquationPass& pass,
                        KOBWBEquation& equation, const std::function<void(KOBWBExpression*)>& mark) {
    KOBWBExpression* own = equation.GetRoot();
    KOBWBPolynomial polynomial;
    if (FlattensMinOrMax(own) || !context.ToPolynomial(own, polynomial)) return Outcome::Stayed;
    // A polynomial that reads back exactly has no opaque atom: one walk over its atoms.
    const bool readsBack = pass.unwritten && context.ReadsBackExactly(polynomial);
    if (!readsBack && context.HasOpaqueAtoms(polynomial)) return Outcome::Stayed;
    const size_t before = pass.unwritten ? pass.unwritten->size() : 0;
    KOBWBExpression* simplified = SimplifyRead(context, equation, std::move(polynomial), pass.unwritten, readsBack);
    // A root the context could not write stays.
    if (simplified == own && !(pass.unwritten && pass.unwritten->size() > before)) return Outcome::Stayed;
    return Apply(factory, pass, equation, mark, simplified, before);
}

// SimplifyRoot on the equation's root, flattened, applied.
Outcome SimplifyFlattened(KOBWBFactory& factory, KOBWBPolynomialContext& context, const EquationPass& pass,
                          KOBWBEquation& equation, const std::function<void(KOBWBExpression*)>& mark) {
    const size_t before = pass.unwritten ? pass.unwritten->size() : 0;
    return Apply(factory, pass, equation, mark, SimplifyRoot(context, equation, pass.unwritten), before);
}

} // namespace

bool RunOnEquation(KOBWBFactory& factory, KOBWBPolynomialContext& context, const EquationPass& pass,
                   const KOBLVRGlobalParameters& parameters, KOBWBEquation& equation,
                   const std::function<void(KOBWBExpression*)>& mark) {
    const bool flattening = (pass.mode & (KOBWBEliminateLinear | KOBWBSimplifyEquations)) != 0;
    KOBLVRStream* trace = flattening ? parameters.GetTraceStream(pass.flattenTraceLevel) : nullptr;
    if (pass.duplicateRoots && (pass.mode & KOBWBSimplifyEquations) && !pass.markBeforeSimplifying &&
        factory.IsUsingTemporaryStorage()) {
        // The duplicate would only be read when the root is written anew: the factory's
        // own tree is read first, and duplicated for the trace or when the root stays.
        KOBWBExpression* own = equation.GetRoot();
        KOBWBExpression* duplicate = nullptr;
        if (trace) {
            equation.DuplicateRoot();
            duplicate = Flattened(equation.GetRoot(), trace);
            equation.SetRoot(own);
        }
        const Outcome outcome = SimplifyOwnTree(factory, context, pass, equation, mark);
        if (outcome != Outcome::Stayed) return outcome != Outcome::Removed;
        if (duplicate) {
            equation.SetRoot(duplicate);
        } else {
            equation.DuplicateRoot();
            Flattened(equation.GetRoot(), nullptr);
        }
        return SimplifyFlattened(factory, context, pass, equation, mark) != Outcome::Removed;
    }
    if (pass.duplicateRoots) equation.DuplicateRoot();
    if (pass.markBeforeSimplifying || !(pass.mode & KOBWBSimplifyEquations)) mark(equation.GetRoot());
    if (flattening) Flattened(equation.GetRoot(), trace);
    if (!(pass.mode & KOBWBSimplifyEquations)) return true;
    return SimplifyFlattened(factory, context, pass, equation, mark) != Outcome::Removed;
}

void WriteReplayInput(KOBLVRStream& stream, KOBWBFactory& factory, unsigned mode, const KOBLVRIntArray* equationsToSimplify) {
    KOBWBEquations(factory, KOBWBEquations::Input, equationsToSimplify).Write(stream);
    stream.GetStorage().AddSection("#!MODE", "", KOBLVRString(static_cast<int>(mode)), KOBLVRStorage::Input, 1);
    stream.WriteSections(KOBLVRStorage::Input);
}

void WriteReplayOutput(KOBLVRStream& stream, KOBWBFactory& factory, const char* inconsistencies) {
    if (inconsistencies) stream.GetStorage().AddSection("#!INCONSISTENCIES", "", inconsistencies, KOBLVRStorage::Output, 2);
    KOBWBEquations(factory, KOBWBEquations::Output).Write(stream);
    stream.WriteSections(KOBLVRStorage::Output);
}

} // namespace kobwb
