#include "KOBWBNodeText.h"

#include "KOBWBBlackBox.h"
#include "KOBWBConstNode.h"
#include "KOBWBEqNode.h"
#include "KOBWBFunctionNames.h"
#include "KOBWBOpNode.h"
#include "KOBWBVarNode.h"

#include <cstdio>
#include <string>
#include <vector>

namespace {

// What is left to write: a node, or a piece of text.
struct Piece {
    const KOBWBNode* node;
    const char* text;
};

const char* FunctionText(KOBWBExpressionType type) {
    if (type == KOBWBRootType) return "root";
    const KOBWBFunctionName* function = KOBWBFindWrittenFunction(type);
    return function ? function->name : "?";
}

// The infix text of a binary operator, or null for a function.
const char* InfixText(const KOBWBOpNode& node) {
    switch (node.GetType()) {
    case KOBWBOrType:
        return " or ";
    case KOBWBAndType:
        return " and ";
    case KOBWBEqualType:
        return " == ";
    case KOBWBNotEqualType:
        return " != ";
    case KOBWBImplicationType:
        return " => ";
    case KOBWBSumType:
        return " + ";
    case KOBWBMinusType:
        return " - ";
    case KOBWBProductType:
        return " * ";
    case KOBWBQuotientType:
        return " / ";
    case KOBWBPowerType:
        return "^";
    case KOBWBLessEqualType:
        switch (node.GetComparisonType()) {
        case KOBWBCompareEqual:
            return " == ";
        case KOBWBCompareNotEqual:
            return " != ";
        case KOBWBCompareLess:
            return " < ";
        case KOBWBCompareGreaterEqual:
            return " >= ";
        case KOBWBCompareGreater:
            return " > ";
        default:
            return " <= ";
        }
    default:
        return nullptr;
    }
}

void AppendValue(KOBLVRString& text, const KOBWBValue& value) {
    char buffer[64];
    if (value.IsAFraction()) {
        // n/d Pi^k, leaving out what is 1.
        const KOBWBFraction f = value.GetAsFraction();
        const bool unitFactor = f.numerator == 1 && f.denominator == 1 && f.powerOfPi != 0;
        if (unitFactor)
            buffer[0] = '\0';
        else if (f.denominator == 1)
            std::snprintf(buffer, sizeof buffer, "%d", f.numerator);
        else
            std::snprintf(buffer, sizeof buffer, "%d/%d", f.numerator, f.denominator);
        text += buffer;
        if (f.powerOfPi == 0) return;
        text += unitFactor ? "Pi" : " Pi";
        if (f.powerOfPi != 1) {
            text += "^";
            text += f.powerOfPi;
        }
        return;
    }
    if (value.IsAKindOf(KOBWBIntegerValue))
        std::snprintf(buffer, sizeof buffer, "%d", value.GetAsInteger());
    else
        std::snprintf(buffer, sizeof buffer, "%.17g", value.GetAsReal());
    text += buffer;
}

// Pushes the pieces of an operator in reverse, so the first is taken first.
void PushOperator(std::vector<Piece>& pending, const KOBWBOpNode& node) {
    const int count = node.GetNbOfChildren();
    const char* infix = InfixText(node);
    pending.push_back({nullptr, ")"});
    if (node.GetType() == KOBWBIfThenElseType && count == 3) {
        pending.push_back({node.GetChild(3), nullptr});
        pending.push_back({nullptr, ") else ("});
        pending.push_back({node.GetChild(2), nullptr});
        pending.push_back({nullptr, ") then ("});
        pending.push_back({node.GetChild(1), nullptr});
        pending.push_back({nullptr, "if ("});
        return;
    }
    if (infix && count == 2) {
        pending.push_back({node.GetChild(2), nullptr});
        pending.push_back({nullptr, infix});
        pending.push_back({node.GetChild(1), nullptr});
        pending.push_back({nullptr, "("});
        return;
    }
    for (int i = count; i >= 1; --i) {
        pending.push_back({node.GetChild(i), nullptr});
        if (i > 1) pending.push_back({nullptr, ", "});
    }
    if (node.GetType() == KOBWBOppositeType)
        pending.push_back({nullptr, "(-"});
    else if (node.GetType() == KOBWBNotType)
        pending.push_back({nullptr, "!("});
    else {
        pending.push_back({nullptr, "("});
        pending.push_back({nullptr, node.GetType() == KOBWBBlackBoxType
                                        ? node.GetCalledName().str()
                                        : FunctionText(node.GetType())});
    }
}

} // namespace

KOBLVRString KOBWBNodeText(const KOBWBNode* root) {
    KOBLVRString text;
    std::vector<Piece> pending(1, Piece{root, nullptr});
    while (!pending.empty()) {
        const Piece piece = pending.back();
        pending.pop_back();
        if (piece.text) {
            text += piece.text;
            continue;
        }
        const KOBWBNode* node = piece.node;
        if (!node) {
            text += "null";
            continue;
        }
        if (!(node->GetUnit() == "None")) {
            pending.push_back({nullptr, node->GetUnit().str()});
            pending.push_back({nullptr, " "});
        }
        switch (node->GetNodeType()) {
        case KOBWBConstNodeType:
            AppendValue(text, static_cast<const KOBWBConstNode*>(node)->GetValue());
            break;
        case KOBWBVarNodeType:
            text += static_cast<const KOBWBVarNode*>(node)->GetName();
            break;
        case KOBWBOpNodeType:
            PushOperator(pending, *static_cast<const KOBWBOpNode*>(node));
            break;
        case KOBWBEqNodeType: {
            const KOBWBEqNode* equation = static_cast<const KOBWBEqNode*>(node);
            pending.push_back({nullptr, ";"});
            if (equation->GetRightTerm()) {
                pending.push_back({equation->GetRightTerm(), nullptr});
                pending.push_back({nullptr, " "});
                pending.push_back({nullptr, KOBWBGetEquationTypeText(equation->GetWBEqType())});
                pending.push_back({nullptr, " "});
            }
            pending.push_back({equation->GetLeftTerm(), nullptr});
            break;
        }
        default:
            break;
        }
    }
    return text;
}

KOBLVRString KOBWBNodeLabel(const KOBWBNode* node) {
    KOBLVRString text;
    if (!node) return text;
    switch (node->GetNodeType()) {
    case KOBWBConstNodeType: AppendValue(text, static_cast<const KOBWBConstNode*>(node)->GetValue()); break;
    case KOBWBVarNodeType: text += static_cast<const KOBWBVarNode*>(node)->GetName(); break;
    case KOBWBEqNodeType:
        text += KOBWBGetEquationTypeText(static_cast<const KOBWBEqNode*>(node)->GetWBEqType());
        break;
    case KOBWBOpNodeType: {
        const KOBWBOpNode& op = *static_cast<const KOBWBOpNode*>(node);
        const char* infix = op.GetNbOfChildren() == 2 ? InfixText(op) : nullptr;
        if (infix) {
            // The sign without the spaces around it.
            while (*infix == ' ') ++infix;
            const char* end = infix;
            while (*end && *end != ' ') ++end;
            text += std::string(infix, static_cast<size_t>(end - infix)).c_str();
        } else if (op.GetType() == KOBWBOppositeType) {
            text += "-";
        } else if (op.GetType() == KOBWBNotType) {
            text += "!";
        } else if (op.GetType() == KOBWBIfThenElseType) {
            text += "if";
        } else if (op.GetType() == KOBWBBlackBoxType) {
            text += op.GetBlackBox() ? op.GetBlackBox()->GetName() : op.GetCalledName();
        } else {
            text += FunctionText(op.GetType());
        }
        break;
    }
    default: break;
    }
    return text;
}
