#ifndef ModelTestSupport_h
#define ModelTestSupport_h

#include "KOBWBx.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

// A model parsed from text or from a file of the test data, with what the parse
// wrote on standard output and standard error.
struct ParsedModel {
    KOBWBModel model;
    KOBLVRIntArray ids;
    KOBWBParserMessenger messenger;
    int errors = 0;
    std::string out;
    std::string err;

    explicit ParsedModel(const char* text, KOBLVRListPKOBWBBlackBox* blackBoxes = nullptr) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        errors = KOBWBParser::Parse(text, model, ids, messenger, blackBoxes);
        out = testing::internal::GetCapturedStdout();
        err = testing::internal::GetCapturedStderr();
    }

    // Parses a file of the test data.
    static std::string DataPath(const char* name) {
        return std::string(KOBWBX_TEST_DATA) + "/" + name;
    }

    // The codes of the reported errors, in report order.
    std::vector<int> Codes() const {
        std::vector<int> codes;
        for (int i = 0; i < messenger.GetErrorNumber(); ++i) {
            int code = 0;
            KOBWBLocation location;
            messenger.GetError(i, code, location);
            codes.push_back(code);
        }
        return codes;
    }

    KOBWBLocation ErrorLocation(int i) const {
        int code = 0;
        KOBWBLocation location;
        messenger.GetError(i, code, location);
        return location;
    }

    KOBWBEqNode* Equation(int i) const {
        KOBWBEqNode* equation = model.GetFirstEquation();
        for (; equation && i > 0; --i)
            equation = model.GetNextEquation(equation);
        return equation;
    }

    // The text of the i-th equation's left and right terms.
    std::string Left(int i) const { return Text(Equation(i)->GetLeftTerm()); }
    std::string Right(int i) const { return Text(Equation(i)->GetRightTerm()); }

    // Structure of a subtree: operators as code(children...), variables by name,
    // constants by value, units after a colon.
    static std::string Text(const KOBWBNode* node);
};

// A black box that a model may call.
class TestBlackBox : public KOBWBBlackBox {
public:
    explicit TestBlackBox(const char* name) : KOBWBBlackBox(name) {}
    void Eval(KOBWBValue& value) { value = KOBWBValue(0.0); }
    double Eval() { return 0.0; }
};

inline std::string ParsedModel::Text(const KOBWBNode* node) {
    if (!node) return "null";
    std::string text;
    switch (node->GetNodeType()) {
    case KOBWBConstNodeType: {
        const KOBWBValue& value = static_cast<const KOBWBConstNode*>(node)->GetValue();
        char buffer[64];
        if (value.IsAFraction()) {
            const KOBWBFraction f = value.GetAsFraction();
            std::snprintf(buffer, sizeof buffer, "%d/%dPi%d", f.numerator, f.denominator,
                          f.powerOfPi);
        } else if (value.IsAKindOf(KOBWBIntegerValue)) {
            std::snprintf(buffer, sizeof buffer, "%d", value.GetAsInteger());
        } else {
            std::snprintf(buffer, sizeof buffer, "%gr", value.GetAsReal());
        }
        text = buffer;
        break;
    }
    case KOBWBVarNodeType:
        text = static_cast<const KOBWBVarNode*>(node)->GetName().str();
        break;
    case KOBWBOpNodeType: {
        const KOBWBOpNode* op = static_cast<const KOBWBOpNode*>(node);
        text = std::to_string(op->GetType());
        if (op->GetComparisonType() != KOBWBNoComparison)
            text += "c" + std::to_string(op->GetComparisonType());
        text += "(";
        for (int i = 1; i <= op->GetNbOfChildren(); ++i) {
            if (i > 1) text += ",";
            text += Text(op->GetChild(i));
        }
        text += ")";
        break;
    }
    default:
        text = "?";
    }
    if (node->HasUnit()) text += std::string(":") + node->GetUnit().str();
    return text;
}

#endif
