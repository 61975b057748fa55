#include "ModelTestSupport.h"

#include <string>
#include <vector>

namespace {

// The warnings of a model as "line:column: first words of the message".
std::vector<std::string> Warnings(const char* text) {
    const ParsedModel parsed(text);
    EXPECT_EQ(parsed.errors, 0) << parsed.err;
    std::vector<std::string> out;
    for (const KOBWBNumberWarning& w : KOBWBModelNumberCheck::Run(parsed.model))
        out.push_back(std::to_string(w.location.GetFirstLine()) + ":" +
                      std::to_string(w.location.GetFirstColumn() + 1) + ": " + w.message.substr(0, 20));
    return out;
}

} // namespace

TEST(KOBWBModelNumberCheck, ConstantsBeyondTheRealsAndArgumentsBelowTheSmallestReal) {
    const std::vector<std::string> expected = {
        "1:5: this constant is bey",   // 1e39
        "2:5: ln has no value for ",   // x free: reaches 0
        "4:5: a power with a non-i",   // y^0.5
        "6:5: ln has no value for ",   // ln(1e-50)
        "7:9: this constant is bey",   // 1e37 km is 1e43 mm
        "8:5: log has no value for",   // log(x - 1)
    };
    EXPECT_EQ(Warnings("a = 1e39;\n"
                       "b = ln(x) + 2;\n"
                       "c = (x^2 + 1)^1.5 + y^(-2) + log(x^2 + 1);\n"
                       "d = y^0.5;\n"
                       "e = y^2 + sqrt(y) + 3e38 + 1e-50;\n"
                       "f = ln(1e-50);\n"
                       "g = 2 * 1e37 km;\n"
                       "h = log(x - 1) + ln(exp(1));\n"),
              expected);
    EXPECT_TRUE(Warnings("x1 = 0 mm; x2 - x1 = 40 mm; sqrt((x3 - x1)^2 + 1) = 80 mm;").empty());
}
