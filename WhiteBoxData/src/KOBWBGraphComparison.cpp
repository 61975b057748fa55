#include "KOBWBGraphComparison.h"

#include "KOBWBAlgebraicOperator.h"
#include "KOBWBBinaryOperator.h"
#include "KOBWBBlackBoxOperator.h"
#include "KOBWBBooleanOperator.h"
#include "KOBWBIfThenElseOperator.h"
#include "KOBWBTrigonometricOperator.h"
#include "KOBWBUnaryOperator.h"

#include <cstddef>
#include <functional>
#include <typeinfo>
#include <unordered_map>
#include <vector>

namespace kobwb {

namespace {

bool IsOrderFree(KOBWBExpressionType type) {
    return type == KOBWBSumType || type == KOBWBProductType || type == KOBWBMinType || type == KOBWBMaxType;
}

// Whether node compares by the operators' rule, which the walk below carries out
// itself; other nodes answer through their own IsEqualTo.
bool ComparesAsOperator(const KOBWBExpression& node) {
    const std::type_info* const type = &typeid(node);
    return type == &typeid(KOBWBAlgebraicOperator) || type == &typeid(KOBWBBinaryOperator) ||
           type == &typeid(KOBWBUnaryOperator) || type == &typeid(KOBWBTrigonometricOperator) ||
           type == &typeid(KOBWBBooleanOperator) || type == &typeid(KOBWBIfThenElseOperator) ||
           type == &typeid(KOBWBBlackBoxOperator);
}

struct Pair {
    const KOBWBExpression* mine;
    const KOBWBExpression* theirs;
    bool operator==(const Pair& other) const { return mine == other.mine && theirs == other.theirs; }
};

struct PairHash {
    std::size_t operator()(const Pair& pair) const {
        const std::hash<const KOBWBExpression*> hash;
        return hash(pair.mine) * 31 + hash(pair.theirs);
    }
};

// The comparison of one pair of operators under way: the next child of mine, and in
// an order-free operator the next candidate among theirs and the children taken.
struct Frame {
    Pair pair;
    int count;
    bool orderFree;
    int next;
    int candidate;
    std::size_t taken;
};

class Comparison {
public:
    bool Run(const KOBWBExpression& mine, const KOBWBExpression* theirs) {
        const Outcome first = Start({&mine, theirs});
        if (first != Outcome::Pending) return first == Outcome::Equal;
        bool result = false;
        bool answered = false;
        while (!m_frames.empty()) {
            const Outcome outcome = Advance(answered, result);
            answered = false;
            // Pending: a frame was opened for a child pair, which goes first.
            if (outcome == Outcome::Pending) continue;
            result = outcome == Outcome::Equal;
            const Frame& done = m_frames.back();
            m_known[done.pair] = result;
            m_taken.resize(done.taken);
            m_frames.pop_back();
            answered = true;
        }
        return result;
    }

private:
    enum class Outcome { Different, Equal, Pending };

    // Compares a pair at once, or opens a frame for it.
    Outcome Start(const Pair& pair) {
        const KOBWBExpression* mine = pair.mine;
        const KOBWBExpression* theirs = pair.theirs;
        if (theirs == mine) return Outcome::Equal;
        if (!theirs || theirs->GetType() != mine->GetType()) return Outcome::Different;
        const int count = mine->GetNbOfChildren();
        if (theirs->GetNbOfChildren() != count) return Outcome::Different;
        const auto known = m_known.find(pair);
        if (known != m_known.end()) return known->second ? Outcome::Equal : Outcome::Different;
        const bool orderFree = IsOrderFree(mine->GetType());
        m_frames.push_back({pair, count, orderFree, 0, 0, m_taken.size()});
        if (orderFree) m_taken.resize(m_taken.size() + static_cast<std::size_t>(count), false);
        return Outcome::Pending;
    }

    // Compares two children: at once, by their own rule, or by a new frame.
    Outcome Child(const KOBWBExpression* mine, const KOBWBExpression* theirs) {
        if (mine == theirs) return Outcome::Equal;
        if (!mine) return Outcome::Different;
        if (!ComparesAsOperator(*mine)) return mine->IsEqualTo(theirs) ? Outcome::Equal : Outcome::Different;
        return Start({mine, theirs});
    }

    // Goes on with the top frame, given the answer for the child pair it waited for.
    // Pending when it opened a frame for another child pair.
    Outcome Advance(bool answered, bool equal) {
        Frame& frame = m_frames.back();
        const KOBWBExpression* mine = frame.pair.mine;
        const KOBWBExpression* theirs = frame.pair.theirs;
        if (!frame.orderFree) {
            if (answered) {
                if (!equal) return Outcome::Different;
                ++frame.next;
            }
            for (; frame.next < frame.count; ++frame.next) {
                const Outcome outcome = Child(mine->GetChild(frame.next), theirs->GetChild(frame.next));
                if (outcome != Outcome::Equal) return outcome;
            }
            return Outcome::Equal;
        }
        if (answered) Settle(m_frames.back(), equal);
        while (m_frames.back().next < m_frames.back().count) {
            Frame& current = m_frames.back();
            if (current.candidate >= current.count) return Outcome::Different;
            if (m_taken[current.taken + static_cast<std::size_t>(current.candidate)]) {
                ++current.candidate;
                continue;
            }
            const Outcome outcome = Child(mine->GetChild(current.next), theirs->GetChild(current.candidate));
            if (outcome == Outcome::Pending) return outcome;
            Settle(current, outcome == Outcome::Equal);
        }
        return Outcome::Equal;
    }

    // The candidate of an order-free frame was compared: taken when equal, else the
    // next one is tried.
    void Settle(Frame& frame, bool equal) {
        if (!equal) {
            ++frame.candidate;
            return;
        }
        m_taken[frame.taken + static_cast<std::size_t>(frame.candidate)] = true;
        ++frame.next;
        frame.candidate = 0;
    }

    std::vector<Frame> m_frames;
    std::vector<bool> m_taken;
    std::unordered_map<Pair, bool, PairHash> m_known;
};

} // namespace

bool OperatorsEqual(const KOBWBExpression& mine, const KOBWBExpression* theirs) {
    return Comparison().Run(mine, theirs);
}

} // namespace kobwb
