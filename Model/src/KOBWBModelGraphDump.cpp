#include "KOBWBModelGraphDump.h"

#include "KOBWBEqNode.h"
#include "KOBWBModel.h"
#include "KOBWBNodeText.h"
#include "KOBWBOpNode.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <mutex>
#include <ostream>
#include <unordered_map>
#include <vector>

namespace {

void AppendQuoted(const char* text, std::string& out) {
    out += '"';
    for (const char* c = text; *c; ++c) {
        const auto byte = static_cast<unsigned char>(*c);
        if (*c == '"' || *c == '\\') {
            out += '\\';
            out += *c;
        } else if (byte < 0x20) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\x%02X", byte);
            out += escaped;
        } else {
            out += *c;
        }
    }
    out += '"';
}

void AppendLocation(const KOBWBNode& node, std::string& out) {
    const KOBWBLocation& location = node.GetLocation();
    out += std::to_string(location.GetFirstLine()) + ':' + std::to_string(location.GetFirstColumn() + 1);
}

const char* KindText(KOBWBNodeType type) {
    switch (type) {
    case KOBWBConstNodeType: return "constant";
    case KOBWBVarNodeType: return "variable";
    default: return "operator";
    }
}

// Numbers the nodes of one equation's terms and writes their records.
class EquationDump {
public:
    EquationDump(int firstId, std::string& out) : m_nextId(firstId), m_out(out) {}

    // Numbers the term's nodes, parents before children; returns the term's id.
    int Number(const KOBWBNode* term) {
        if (!term) return -1;
        const int id = m_nextId;
        std::vector<const KOBWBNode*> pending(1, term);
        while (!pending.empty()) {
            const KOBWBNode* node = pending.back();
            pending.pop_back();
            m_ids.emplace(node, m_nextId++);
            m_order.push_back(node);
            if (node->GetNodeType() != KOBWBOpNodeType) continue;
            const auto* op = static_cast<const KOBWBOpNode*>(node);
            for (int i = op->GetNbOfChildren(); i >= 1; --i)
                if (op->GetChild(i)) pending.push_back(op->GetChild(i));
        }
        return id;
    }

    void WriteNodes() {
        for (const KOBWBNode* node : m_order) {
            m_out += "node " + std::to_string(m_ids[node]) + ' ' + KindText(node->GetNodeType()) + ' ';
            AppendQuoted(KOBWBNodeLabel(node).str(), m_out);
            if (node->HasUnit()) {
                m_out += " unit ";
                AppendQuoted(node->GetUnit().str(), m_out);
            }
            m_out += ' ';
            AppendLocation(*node, m_out);
            if (node->GetNodeType() == KOBWBOpNodeType) {
                const auto* op = static_cast<const KOBWBOpNode*>(node);
                m_out += " children";
                for (int i = 1; i <= op->GetNbOfChildren(); ++i)
                    if (op->GetChild(i)) m_out += ' ' + std::to_string(m_ids[op->GetChild(i)]);
            }
            m_out += '\n';
        }
    }

    int NextId() const { return m_nextId; }

private:
    int m_nextId;
    std::string& m_out;
    std::vector<const KOBWBNode*> m_order;
    std::unordered_map<const KOBWBNode*, int> m_ids;
};

// How many files each folder and log name has had in this process.
class DumpCounts {
public:
    // The path of the next file for the base path (folder and log name); each
    // call takes a number of its own.
    std::string Next(const std::string& base) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const int count = ++m_counts[base];
        return count == 1 ? base + ".WBGraph" : base + '_' + std::to_string(count) + ".WBGraph";
    }

private:
    std::mutex m_mutex;
    std::map<std::string, int> m_counts;
};

DumpCounts& Counts() {
    static DumpCounts counts;
    return counts;
}

} // namespace

void KOBWBModelGraphDump::Write(const KOBWBModel& model, std::string& out) {
    out += "WBGraph 1\n";
    int nextId = 0;
    for (const KOBWBEqNode* equation = model.GetFirstEquation(); equation;
         equation = model.GetNextEquation(equation)) {
        EquationDump dump(nextId, out);
        const int left = dump.Number(equation->GetLeftTerm());
        const int right = dump.Number(equation->GetRightTerm());
        out += "equation " + std::to_string(equation->GetId()) + ' ';
        AppendQuoted(equation->GetRightTerm() ? KOBWBNodeLabel(equation).str() : "", out);
        out += ' ';
        AppendLocation(*equation, out);
        out += " left " + std::to_string(left) + " right " + (right < 0 ? std::string("-") : std::to_string(right));
        out += '\n';
        dump.WriteNodes();
        nextId = dump.NextId();
    }
}

bool KOBWBModelGraphDump::Write(const KOBWBModel& model, std::ostream& out) {
    std::string text;
    Write(model, text);
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    return static_cast<bool>(out);
}

KOBWBModelGraphDump::Result KOBWBModelGraphDump::WriteFile(const KOBWBModel& model, std::string* path) {
    return WriteFileInto(model, std::getenv("ADL_ODT_OUT"), path);
}

KOBWBModelGraphDump::Result KOBWBModelGraphDump::WriteFileInto(const KOBWBModel& model, const char* folder,
                                                           std::string* path) {
    if (!folder || !*folder) return NotRequested;
    const char* logName = std::getenv("ODT_LOG_NAME");
    std::string base = folder;
    if (base.back() != '/') base += '/';
    base += logName && *logName ? logName : DefaultLogName;
    const std::string file = Counts().Next(base);
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    if (!stream || !Write(model, stream)) return Failed;
    stream.close();
    if (!stream) return Failed;
    if (path) *path = file;
    return Written;
}
