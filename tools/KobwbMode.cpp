#include "KobwbMode.h"

#include <cstdlib>

namespace kobwb_tool {

namespace {

constexpr unsigned largestMode = 31;

} // namespace

std::string ParseMode(const std::string& text, unsigned& mode) {
    const std::string problem = "bad mode " + text + " (0 to 31, or bits joined by +, such as 2+4+16)";
    if (text.empty()) return problem;
    unsigned bits = 0;
    size_t at = 0;
    while (at <= text.size()) {
        const size_t end = text.find_first_of("+|", at);
        const std::string part = text.substr(at, end == std::string::npos ? std::string::npos : end - at);
        char* stop = nullptr;
        const long value = std::strtol(part.c_str(), &stop, 10);
        if (part.empty() || *stop != '\0' || part[0] == '-' || part[0] == '+' || value < 0 ||
            value > static_cast<long>(largestMode))
            return problem;
        bits |= static_cast<unsigned>(value);
        if (end == std::string::npos) break;
        at = end + 1;
    }
    mode = bits;
    return "";
}

} // namespace kobwb_tool
