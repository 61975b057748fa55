// Call sequences: the bytes drive the factory's calls, null pointers and
// out-of-range indices included. Nodes made in temporary mode leave the pool when it
// is switched off, since the factory destroys them then; everything else the pool
// holds stays alive for the factory's life.

#include "FuzzGraph.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

KOBWBEquation* PickEquation(KOBWBFactory& factory, FuzzInput& input) {
    const int count = factory.GetNbOfEquations();
    if (count == 0) return nullptr;
    KOBWBEquation* equation = factory.GetFirstEquation();
    for (int i = input.Below(count); i > 0 && equation; --i)
        equation = factory.GetNextEquation(equation);
    return equation;
}

// Bounds on the graphs a sequence makes. A derivative's graph is larger than the graph it
// differentiates by about the widest node's number of children, so nested derivatives
// of wide nodes grow geometrically: that is the cost of the calls, not a fault, and
// would only time out.
constexpr int maxDerivatives = 2;
constexpr int maxChildrenAdded = 8;

class Sequence {
public:
    explicit Sequence(FuzzInput& input) : m_input(input), m_graph(m_factory, input) {}

    void Step() {
        auto& pool = m_graph.Pool();
        switch (m_input.Below(16)) {
        case 0:
        case 1:
            Made(m_graph.Create(false, true));
            break;
        case 2: {
            KOBWBExpression* root = m_graph.Pick(true);
            KOBWBExpression* right = m_input.Below(2) ? m_graph.Pick(true) : nullptr;
            m_factory.AddEquation(root, static_cast<KOBWBEquationType>(m_input.Below(10)), right);
            break;
        }
        case 3: {
            KOBWBEquation* equation = PickEquation(m_factory, m_input);
            m_factory.RemoveEquation(equation);
            break;
        }
        case 4: {
            // Mostly a variable's domain, sometimes a value forced onto any node.
            KOBWBExpression* node = m_input.Below(4) ? m_factory.GetVariable(m_input.Below(8) - 1)
                                                     : m_graph.Pick(false);
            if (node) node->SetExprValue(FuzzDomain(m_input));
            break;
        }
        case 5:
            if (KOBWBExpression* node = m_graph.Pick(false)) node->GetValue();
            break;
        case 6:
            ReplaceChild();
            break;
        case 7:
            if (KOBWBExpression* node = m_graph.Pick(false))
                node->RemoveChild(m_input.Below(5) - 1);
            break;
        case 8: {
            KOBWBExpression* parent = m_graph.Pick(false);
            const int at =
                pool.empty()
                    ? 0
                    : static_cast<int>(std::find(pool.begin(), pool.end(), parent) - pool.begin());
            if (parent && at > 0 && parent->GetNbOfChildren() < maxChildrenAdded)
                parent->AddChild(pool[m_input.Below(at)]);
            break;
        }
        case 9:
            SwitchTemporaryStorage();
            break;
        case 10: {
            if (++m_derivatives > maxDerivatives) break;
            KOBWBVariable* variables[2] = {m_factory.GetVariable(m_input.Below(4) - 1),
                                           m_factory.GetVariable(m_input.Below(4) - 1)};
            const int order = m_derivatives == 1 ? 1 + m_input.Below(2) : 1;
            Made(m_factory.CreateDerivative(m_graph.Pick(true), order, variables));
            break;
        }
        case 11:
            Clone();
            break;
        case 12:
            if (KOBWBEquation* equation = PickEquation(m_factory, m_input))
                equation->DuplicateRoot();
            break;
        case 13: {
            KOBWBExpression* nodes[3] = {m_graph.Pick(true), m_graph.Pick(true),
                                         m_graph.Pick(true)};
            m_factory.EvaluateExpressions(1 + m_input.Below(3), nodes);
            break;
        }
        case 14:
            m_factory.ResetBuffer(m_graph.Pick(true));
            break;
        default:
            if (KOBWBEquation* equation = PickEquation(m_factory, m_input))
                if (equation->GetRoot()) equation->GetRoot()->GetValue();
            break;
        }
    }

private:
    void Made(KOBWBExpression* node) {
        if (node && m_factory.IsUsingTemporaryStorage()) m_temporary.push_back(node);
        auto& pool = m_graph.Pool();
        if (node && std::find(pool.begin(), pool.end(), node) == pool.end()) pool.push_back(node);
    }

    // Only an earlier node of the pool may become the child, so that no cycle forms.
    void ReplaceChild() {
        auto& pool = m_graph.Pool();
        if (pool.size() < 2) return;
        const int at = 1 + m_input.Below(static_cast<int>(pool.size()) - 1);
        const int child = m_input.Byte();
        pool[at]->ReplaceChild(m_input.Below(5) - 1, child == 255 ? nullptr : pool[child % at]);
    }

    // On, off with copies, or off keeping the nodes reached in place.
    void SwitchTemporaryStorage() {
        const int way = m_input.Below(3);
        if (way == 2)
            m_factory.CommitTemporaryStorage();
        else
            m_factory.UseTemporaryStorage(way == 0);
        if (way == 0) return;
        auto& pool = m_graph.Pool();
        for (KOBWBExpression* node : m_temporary)
            pool.erase(std::remove(pool.begin(), pool.end(), node), pool.end());
        m_temporary.clear();
    }

    void Clone() {
        KOBLVRIntArray ids, newIds;
        for (int i = m_input.Below(3); i >= 0; --i)
            ids.Append(m_input.Below(8) - 1);
        KOBLVRArrayKOBLVRString oldNames, newNames;
        if (KOBWBVariable* variable = m_factory.GetVariable(m_input.Below(3))) {
            variable->SetName(m_input.Below(2) ? "a" : "b");
            oldNames.Append(variable->GetName());
            newNames.Append(m_input.Below(2) ? "a" : "c");
        }
        m_factory.CloneEquations(ids, newIds, oldNames, newNames);
    }

    FuzzInput& m_input;
    KOBWBFactory m_factory;
    FuzzGraph m_graph;
    std::vector<KOBWBExpression*> m_temporary;
    int m_derivatives = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    Sequence sequence(input);
    for (int steps = 0; steps < 200 && !input.Empty(); ++steps)
        sequence.Step();
    return 0;
}
