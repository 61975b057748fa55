#include "KOBWBNodeLabels.h"

#include "KOBWBExpression.h"
#include "KOBWBValueText.h"
#include "KOBWBVariable.h"

namespace kobwb {

void AppendQuoted(const std::string& text, std::string& out) {
    out += '"';
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (c == '\n') {
            out += "\\n";
        } else if (static_cast<unsigned char>(c) < 0x20) {
            out += ' ';
        } else {
            out += c;
        }
    }
    out += '"';
}

std::string NodeLabel(const KOBWBExpression* node) {
    if (node->GetType() == KOBWBVariableType) {
        auto* variable = const_cast<KOBWBVariable*>(static_cast<const KOBWBVariable*>(node));
        const KOBLVRString& name = variable->GetName();
        return name.Length() > 0 ? std::string(name.str()) : "v" + std::to_string(variable->GetIdx());
    }
    if (node->GetType() == KOBWBConstantType) {
        std::string text;
        AppendValue(node->GetExprValue(), text);
        return text;
    }
    return KOBWBGetExpressionTypeName(node->GetType());
}

bool AppendBufferedValue(const KOBWBExpression* node, std::string& out) {
    if (node->GetType() == KOBWBConstantType || !node->IsBufferValid()) return false;
    AppendValue(node->GetExprValue(), out);
    return true;
}

} // namespace kobwb
