#ifndef ItlVectors_h
#define ItlVectors_h

#include "KOBWBInterval.h"
#include "KOBWBLimits.h"

#include <algorithm>
#include <cctype>
#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

// Reading and judging the interval community's test vectors (ITL files in
// ../shared/itf1788 beside the project).
//
// - infinity is the library's real infinity KOBWBMaxReal and [entire] the whole clamped
//   line; a finite number beyond KOBWBMaxReal has no counterpart and its case is
//   skipped, counted. [empty] is the Nil interval.
// - Decorated cases (_com, _dac, _def, _trv), [nai] and signals are skipped, counted.
// - The library does not round outwards, so a result passes when it contains the
//   expected interval shrunk by a tolerance of a few units of rounding and lies in it
//   widened by that tolerance.
namespace itl {

using RI = KOBWBRealInterval;

struct Case {
    std::string file;
    int line = 0;
    std::string operation;
    std::vector<RI> intervals;
    int exponent = 0;
    std::vector<RI> expected;
};

struct Counts {
    int run = 0;
    int passed = 0;
    int loose = 0;
    int skipped = 0;
};

inline std::string VectorsFolder() {
    return std::string(KOBWBX_PROJECT_ROOT) + "/../shared/itf1788";
}

inline bool ParseNumber(const std::string& text, double& value) {
    if (text == "infinity" || text == "+infinity") {
        value = KOBWBMaxReal;
        return true;
    }
    if (text == "-infinity") {
        value = -KOBWBMaxReal;
        return true;
    }
    char* end = nullptr;
    value = std::strtod(text.c_str(), &end);
    // Finite numbers beyond the library's infinity have no counterpart.
    return end && *end == '\0' && std::fabs(value) <= KOBWBMaxReal;
}

// The intervals of a piece of the ITL line, false when one has no counterpart. A word
// that is not an interval is an integer exponent.
inline bool ParseIntervals(const std::string& text, std::vector<RI>& intervals, int& exponent) {
    std::size_t at = 0;
    while (at < text.size()) {
        if (std::isspace(static_cast<unsigned char>(text[at]))) {
            ++at;
            continue;
        }
        if (text[at] != '[') {
            std::size_t end = at;
            while (end < text.size() && !std::isspace(static_cast<unsigned char>(text[end])))
                ++end;
            exponent = std::atoi(text.substr(at, end - at).c_str());
            at = end;
            continue;
        }
        const std::size_t close = text.find(']', at);
        std::string inside = text.substr(at + 1, close - at - 1);
        at = close + 1;
        inside.erase(std::remove(inside.begin(), inside.end(), ' '), inside.end());
        if (inside == "empty") {
            intervals.push_back(KOBWBReal_Nil);
        } else if (inside == "entire") {
            intervals.push_back(KOBWBReal_Any);
        } else {
            const std::size_t comma = inside.find(',');
            double lower = 0;
            double upper = 0;
            if (comma == std::string::npos || !ParseNumber(inside.substr(0, comma), lower) ||
                !ParseNumber(inside.substr(comma + 1), upper))
                return false;
            intervals.push_back({lower, upper});
        }
    }
    return true;
}

inline bool IsEmpty(const RI& a) {
    return !(a.lower <= a.upper);
}

inline RI Hull(const RI& a, const RI& b) {
    if (IsEmpty(a)) return b;
    if (IsEmpty(b)) return a;
    return {std::min(a.lower, b.lower), std::max(a.upper, b.upper)};
}

// 64 units of rounding of the bound, plus the smallest normal double for bounds at 0;
// a flat tolerance is 1e-7, relative.
inline double Tolerance(double bound, bool flat) {
    if (flat) return 1e-7 * std::max(1.0, std::fabs(bound));
    return 64 * DBL_EPSILON * std::fabs(bound) + KOBWBMinReal;
}

enum class Outcome { Passed, Loose, Failed };

// Passed: the result holds the expected interval shrunk by the tolerance and lies in it
// widened. Loose: it holds the expected interval shrunk but is wider, which keeps every
// solution. Failed: it misses part of the expected interval.
inline Outcome Compare(const RI& result, const RI& expected, bool flat) {
    if (IsEmpty(expected)) return IsEmpty(result) ? Outcome::Passed : Outcome::Loose;
    if (IsEmpty(result)) return Outcome::Failed;
    const double lowerTolerance = Tolerance(expected.lower, flat);
    const double upperTolerance = Tolerance(expected.upper, flat);
    const bool holdsShrunk = result.lower <= expected.lower + lowerTolerance &&
                             result.upper >= expected.upper - upperTolerance;
    const bool insideWidened = result.lower >= expected.lower - lowerTolerance &&
                               result.upper <= expected.upper + upperTolerance;
    if (!holdsShrunk) return Outcome::Failed;
    return insideWidened ? Outcome::Passed : Outcome::Loose;
}

inline std::string Text(const RI& a) {
    if (IsEmpty(a)) return "[empty]";
    std::ostringstream text;
    text.precision(17);
    text << "[" << a.lower << ", " << a.upper << "]";
    return text.str();
}

// Reads the cases of a file; undecorated cases of covered form only, the others counted
// as skipped under their operation.
inline std::vector<Case> ReadCases(const std::string& path, const std::string& file,
                                   std::map<std::string, Counts>& counts) {
    std::vector<Case> cases;
    std::ifstream in(path);
    std::string text;
    int lineNumber = 0;
    bool inComment = false;
    while (std::getline(in, text)) {
        ++lineNumber;
        if (inComment) {
            if (text.find("*/") != std::string::npos) inComment = false;
            continue;
        }
        if (text.find("/*") != std::string::npos) {
            inComment = text.find("*/") == std::string::npos;
            continue;
        }
        const std::size_t comment = text.find("//");
        if (comment != std::string::npos) text.erase(comment);
        const std::size_t equals = text.find('=');
        const std::size_t end = text.find(';');
        if (equals == std::string::npos || end == std::string::npos) continue;
        std::istringstream words(text);
        Case c;
        c.file = file;
        c.line = lineNumber;
        words >> c.operation;
        const std::string arguments =
            text.substr(text.find(c.operation) + c.operation.size(),
                        equals - text.find(c.operation) - c.operation.size());
        const std::string result = text.substr(equals + 1, end - equals - 1);
        if (text.find("]_") != std::string::npos || text.find("nai") != std::string::npos ||
            text.find("signal") != std::string::npos ||
            !ParseIntervals(arguments, c.intervals, c.exponent)) {
            ++counts[c.operation].skipped;
            continue;
        }
        int unused = 0;
        if (!ParseIntervals(result, c.expected, unused) || c.expected.empty()) {
            ++counts[c.operation].skipped;
            continue;
        }
        cases.push_back(c);
    }
    return cases;
}

} // namespace itl

#endif
