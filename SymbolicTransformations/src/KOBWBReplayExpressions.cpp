#include "KOBWBReplayExpressions.h"

#include "KOBWBBlackBoxOperator.h"
#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBReplayText.h"
#include "KOBWBVariable.h"

#include <cstring>

namespace kobwb {
namespace replay {

namespace {

// The parameters a step carries.
constexpr int stepParameters = 4;
// The codes that operator heads may name; leaves have forms of their own.
constexpr int firstOperatorCode = KOBWBNotType;
constexpr int lastOperatorCode = KOBWBIntegrateType;

bool TypeOfHead(const std::string& head, KOBWBExpressionType& type) {
    for (int code = firstOperatorCode; code <= lastOperatorCode; ++code) {
        const char* name = KOBWBGetExpressionTypeName(static_cast<KOBWBExpressionType>(code));
        if (*name && head == name) {
            type = static_cast<KOBWBExpressionType>(code);
            return true;
        }
    }
    return false;
}

bool IsAlgebraic(KOBWBExpressionType type) {
    return type == KOBWBSumType || type == KOBWBProductType || type == KOBWBMinType || type == KOBWBMaxType;
}

} // namespace

ExpressionWriter::ExpressionWriter(const std::vector<KOBWBExpression*>& roots) {
    std::vector<KOBWBExpression*> pending(roots);
    while (!pending.empty()) {
        KOBWBExpression* node = pending.back();
        pending.pop_back();
        if (!node || node->GetType() == KOBWBVariableType) continue;
        if (++m_references[node] > 1) continue;
        for (int i = 0; i < node->GetNbOfChildren(); ++i) pending.push_back(node->GetChild(i));
    }
}

bool ExpressionWriter::Open(std::string& text, KOBWBExpression* node) {
    if (!node) {
        text += "null";
        return false;
    }
    const KOBWBExpressionType type = node->GetType();
    if (type == KOBWBVariableType) {
        text += 'v';
        AppendInteger(text, static_cast<KOBWBVariable*>(node)->GetIdx());
        return false;
    }
    const auto references = m_references.find(node);
    if (references != m_references.end() && references->second > 1) {
        text += '@';
        const auto known = m_labels.find(node);
        if (known != m_labels.end()) {
            AppendInteger(text, known->second);
            return false;
        }
        const int label = static_cast<int>(m_labels.size()) + 1;
        m_labels.emplace(node, label);
        AppendInteger(text, label);
        text += '=';
    }
    if (type == KOBWBConstantType) {
        AppendValue(text, node->GetExprValue());
        return false;
    }
    const char* head = KOBWBGetExpressionTypeName(type);
    text += *head ? head : "?";
    if (type == KOBWBStepType) {
        text += '[';
        for (int i = 0; i < stepParameters; ++i) {
            if (i > 0) text += ',';
            AppendReal(text, node->GetParameter(i));
        }
        text += ']';
    } else if (type == KOBWBBlackBoxType) {
        text += '[';
        AppendQuoted(text, static_cast<KOBWBBlackBoxOperator*>(node)->GetBlackBoxName().str());
        text += ']';
    }
    text += '(';
    return true;
}

void ExpressionWriter::Append(std::string& text, KOBWBExpression* root) {
    struct Frame {
        KOBWBExpression* node;
        int next;
    };
    std::vector<Frame> frames;
    if (Open(text, root)) frames.push_back({root, 0});
    while (!frames.empty()) {
        KOBWBExpression* node = frames.back().node;
        const int i = frames.back().next++;
        if (i >= node->GetNbOfChildren()) {
            text += ')';
            frames.pop_back();
            continue;
        }
        if (i > 0) text += ", ";
        KOBWBExpression* child = node->GetChild(i);
        if (Open(text, child)) frames.push_back({child, 0});
    }
}

struct ExpressionReader::Frame {
    KOBWBExpressionType type = KOBWBConstantType;
    int label = 0;
    KOBWBBlackBox* blackBox = nullptr;
    double parameters[stepParameters] = {};
    std::vector<KOBWBExpression*> children;
};

bool ExpressionReader::ReadLabel(TextCursor& in, int& label, KOBWBExpression*& node) {
    label = 0;
    node = nullptr;
    if (!in.Accept('@')) return true;
    int number = 0;
    if (!in.ReadInteger(number)) return false;
    const int defined = static_cast<int>(m_labelled.size());
    if (in.Accept('=')) {
        if (number != defined + 1) return false;
        m_labelled.push_back(nullptr);
        label = number;
        return true;
    }
    if (number < 1 || number > defined) return false;
    node = m_labelled[static_cast<size_t>(number - 1)];
    return node != nullptr;
}

void ExpressionReader::Define(int label, KOBWBExpression* node) {
    if (label > 0) m_labelled[static_cast<size_t>(label - 1)] = node;
}

bool ExpressionReader::ReadHead(TextCursor& in, Frame& frame) {
    std::string head;
    if (!in.ReadUntil("([ ,)", head) || !TypeOfHead(head, frame.type)) return false;
    if (frame.type == KOBWBStepType) {
        if (!in.Accept('[')) return false;
        for (int i = 0; i < stepParameters; ++i)
            if ((i > 0 && !in.Accept(',')) || !in.ReadReal(frame.parameters[i])) return false;
        if (!in.Accept(']')) return false;
    } else if (frame.type == KOBWBBlackBoxType) {
        std::string name;
        if (!in.Accept('[') || !in.ReadQuoted(name) || !in.Accept(']')) return false;
        frame.blackBox = m_factory.GetBlackBoxByName(name.c_str());
        if (!frame.blackBox) return false;
    }
    return in.Accept('(');
}

KOBWBExpression* ExpressionReader::BuildAlgebraic(Frame& frame) {
    const int count = static_cast<int>(frame.children.size());
    if (count >= 2) return m_factory.CreateAlgebraicOperator(frame.type, count, frame.children.data());
    // A sum, product, minimum or maximum that lost children down to one or none:
    // made over two, then cut back.
    KOBWBExpression* filler = count == 1 ? frame.children[0] : m_factory.CreateIntegerConstant(0);
    KOBWBExpression* pair[] = {filler, filler};
    KOBWBExpression* node = m_factory.CreateAlgebraicOperator(frame.type, 2, pair);
    while (node && node->GetNbOfChildren() > count) node->RemoveChild(node->GetNbOfChildren() - 1);
    return node;
}

KOBWBExpression* ExpressionReader::Build(Frame& frame) {
    const int count = static_cast<int>(frame.children.size());
    KOBWBExpression** children = frame.children.data();
    if (IsAlgebraic(frame.type)) return BuildAlgebraic(frame);
    if (frame.type == KOBWBBlackBoxType) return m_factory.DeclareBlackBox(frame.blackBox, count, children, 0);
    if (frame.type != KOBWBStepType) return m_factory.CreateOperator(frame.type, count, children);
    KOBWBExpression* step = count == 1 ? m_factory.CreateUnaryOperator(KOBWBStepType, children[0]) : nullptr;
    for (int i = 0; step && i < stepParameters; ++i) step->SetParameter(i, frame.parameters[i]);
    return step;
}

bool ExpressionReader::Read(TextCursor& in, KOBWBExpression*& root) {
    root = nullptr;
    if (in.AcceptWord("null")) return true;
    std::vector<Frame> frames;
    for (;;) {
        int label = 0;
        KOBWBExpression* node = nullptr;
        if (!ReadLabel(in, label, node)) return false;
        if (!node) {
            const char next = in.Peek();
            if (next == 'v') {
                int index = -1;
                in.Accept('v');
                if (!in.ReadInteger(index)) return false;
                node = m_factory.GetVariable(index);
            } else if (next != '\0' && std::strchr("UIRBF", next)) {
                KOBWBValue value;
                if (!in.ReadValue(value)) return false;
                node = m_factory.CreateConstant(value);
            } else {
                frames.emplace_back();
                frames.back().label = label;
                if (!ReadHead(in, frames.back())) return false;
                // Its children follow, unless its list is empty.
                if (!in.Accept(')')) continue;
                node = Build(frames.back());
                frames.pop_back();
            }
            if (!node) return false;
            Define(label, node);
        }
        // Hands finished nodes up, building the operators whose lists end here.
        for (;;) {
            if (frames.empty()) {
                root = node;
                return true;
            }
            frames.back().children.push_back(node);
            if (in.Accept(',')) break;
            if (!in.Accept(')')) return false;
            node = Build(frames.back());
            if (!node) return false;
            Define(frames.back().label, node);
            frames.pop_back();
        }
    }
}

} // namespace replay
} // namespace kobwb
