#include "KOBWBStableKeys.h"

#include "KOBWBBlackBox.h"
#include "KOBWBBlackBoxOperator.h"
#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBVariable.h"

#include <cstdio>
#include <cstring>
#include <unordered_map>
#include <vector>

namespace KOBWBStableKeys {

std::uint64_t Digest(const std::string& text, std::uint64_t digest) {
    for (const char c : text) digest = (digest ^ static_cast<unsigned char>(c)) * 1099511628211ull;
    return digest;
}

std::uint64_t Mix(std::uint64_t digest, std::uint64_t value) {
    digest ^= value + 0x9E3779B97F4A7C15ull + (digest << 6) + (digest >> 2);
    digest ^= digest >> 31;
    return digest * 0xBF58476D1CE4E5B9ull;
}

std::string Hex(std::uint64_t digest) {
    char text[20];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(digest));
    return text;
}

namespace {

// Numbers as fixed-width hexadecimal texts that sort as the numbers do.
std::string Number(double x) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &x, sizeof bits);
    bits = bits >> 63 ? ~bits : bits | 1ull << 63;
    return Hex(bits) + ",";
}

std::string Number(int n) {
    char text[16];
    std::snprintf(text, sizeof text, "%08x,", static_cast<unsigned>(n) ^ 0x80000000u);
    return text;
}

} // namespace

std::string ValueText(const KOBWBValue& value) {
    if (value.IsAFraction()) {
        const KOBWBFraction f = value.GetAsFraction();
        return "f" + Number(f.numerator) + Number(f.denominator) + Number(f.powerOfPi);
    }
    std::string text;
    switch (value.GetType()) {
    case KOBWBIntegerValue: return "i" + Number(value.GetAsInteger());
    case KOBWBRealValue: return "r" + Number(value.GetAsReal());
    case KOBWBIntegerIntervalValue: {
        const KOBWBIntegerInterval i = value.GetAsIntegerInterval();
        return "I" + Number(i.lower) + Number(i.upper);
    }
    case KOBWBRealIntervalValue: {
        const KOBWBRealInterval r = value.GetAsRealInterval();
        return "R" + Number(r.lower) + Number(r.upper);
    }
    case KOBWBIntegerEnumValue:
        text = "E";
        for (int i = 0; i < value.GetIntegerEnum().GetSize(); ++i) text += Number(value.GetIntegerEnum().Get(i));
        return text;
    case KOBWBRealEnumValue:
        text = "F";
        for (int i = 0; i < value.GetRealEnum().GetSize(); ++i) text += Number(value.GetRealEnum().Get(i));
        return text;
    case KOBWBBooleanValue: return "B" + Number(static_cast<int>(value.GetAsBoolean()));
    default: return "U";
    }
}

std::string NodeHead(KOBWBExpression* node) {
    char text[64];
    std::snprintf(text, sizeof text, "c%02d", static_cast<int>(node->GetType()));
    std::string head = text;
    for (int i = 0; i < node->GetNbOfParameters(); ++i) {
        head += "p" + Number(node->GetParameter(i));
    }
    if (node->GetType() == KOBWBBlackBoxType) {
        // A black box by its name, then by the order of its declaration; the name's
        // length first keeps any character of the name from reading as structure.
        const KOBWBBlackBox* blackBox = static_cast<KOBWBBlackBoxOperator*>(node)->GetBlackBox();
        const std::string name = blackBox ? blackBox->GetName().str() : std::string();
        head += "b" + std::to_string(name.size()) + ":" + name + "#" +
                std::to_string(node->GetFactory().GetBlackBoxIndex(blackBox));
    }
    return head;
}

std::uint64_t NodeDigest(KOBWBExpression* root) {
    // Children before parents, each node once however many parents share it. A node
    // is entered with the digest 0, which a cycle made by replacing children reads.
    std::unordered_map<const KOBWBExpression*, std::uint64_t> digests{{root, 0}};
    std::vector<std::pair<KOBWBExpression*, int>> stack{{root, 0}};
    while (!stack.empty()) {
        KOBWBExpression* node = stack.back().first;
        const int next = stack.back().second;
        if (next < node->GetNbOfChildren()) {
            ++stack.back().second;
            KOBWBExpression* child = node->GetChild(next);
            if (child && digests.emplace(child, 0).second) stack.push_back({child, 0});
            continue;
        }
        stack.pop_back();
        std::string head = NodeHead(node);
        if (node->GetType() == KOBWBConstantType) head += ValueText(node->GetExprValue());
        if (node->GetType() == KOBWBVariableType) head += "v" + std::to_string(static_cast<KOBWBVariable*>(node)->GetIdx());
        std::uint64_t digest = Digest(head);
        for (int i = 0; i < node->GetNbOfChildren(); ++i) {
            const auto found = digests.find(node->GetChild(i));
            digest = Mix(digest, found == digests.end() ? 0 : found->second);
        }
        digests[node] = digest;
    }
    return digests[root];
}

} // namespace KOBWBStableKeys
