#include "ModelTestSupport.h"

#include <sstream>

namespace {

// The class of the left term of the first equation of a text.
std::string ClassOf(const char* text) {
    ParsedModel parsed(text);
    return KOBWBModelHomogeneity::FillHomogeneity(parsed.Equation(0)->GetLeftTerm()).str();
}

long Check(const char* text) {
    ParsedModel parsed(text);
    return KOBWBModelHomogeneity::CheckHomogeneity(parsed.model);
}

} // namespace

TEST(KOBWBModelHomogeneity, ClassifiesSubtrees) {
    EXPECT_EQ(ClassOf("2 km + 3 m;"), "Distance");
    EXPECT_EQ(ClassOf("2 km + 30 deg;"), "Inhomogeneous");
    EXPECT_EQ(ClassOf("2 km * 3 km;"), "Unsolved");
    EXPECT_EQ(ClassOf("(2 km) / (4 km);"), "None");
    EXPECT_EQ(ClassOf("(2 deg) / (4 rad);"), "None");
    EXPECT_EQ(ClassOf("sin(30 deg);"), "Unsolved");
    EXPECT_EQ(ClassOf("min(1 mm, 2 mm, 3 mm);"), "Unsolved");
    EXPECT_EQ(ClassOf("2 mm ^ 2;"), "Unsolved");
    // An ambiguous unit adopts the other operand's class in a sum.
    EXPECT_EQ(ClassOf("5 ' + 2 mm;"), "Distance");
    EXPECT_EQ(ClassOf("30 deg - 5 ';"), "Angle");
    EXPECT_EQ(ClassOf("5 ' + 2;"), "None");
    // A product passes an inhomogeneous factor on through a dimensionless one.
    EXPECT_EQ(ClassOf("2 * (1 mm + 1 rad);"), "Inhomogeneous");
    EXPECT_EQ(ClassOf("(1 mm + 1 rad) * 2;"), "Inhomogeneous");
    EXPECT_EQ(ClassOf("(1 mm + sin(x)) / 2;"), "Unsolved");
    // Quotients, by the constancy of their operands.
    EXPECT_EQ(ClassOf("5 ' / 2;"), "Ambiguous");
    EXPECT_EQ(ClassOf("5 ' / k;"), "None");
    EXPECT_EQ(ClassOf("2 / (3 mm);"), "Unsolved");
    EXPECT_EQ(ClassOf("k / (3 mm);"), "None");
    EXPECT_EQ(ClassOf("2 / k;"), "Unsolved");
    EXPECT_EQ(ClassOf("k / 2;"), "None");
    EXPECT_EQ(ClassOf("(3 mm) / 5 ';"), "None");
    EXPECT_EQ(ClassOf("(3 rad) / 2;"), "Angle");
    EXPECT_EQ(ClassOf("(3 mm) / (3 rad);"), "Unsolved");
    EXPECT_EQ(KOBWBModelHomogeneity::FillHomogeneity(nullptr), "Inhomogeneous");
}

TEST(KOBWBModelHomogeneity, UsesTheClassesOfVariables) {
    // x is a length, k dimensionless, from what the model check infers.
    ParsedModel parsed("x = 10 mm; x / 2; x / k; k;");
    EXPECT_EQ(KOBWBModelHomogeneity::FillHomogeneity(parsed.Equation(1)->GetLeftTerm()),
              "Distance");
    EXPECT_EQ(KOBWBModelHomogeneity::FillHomogeneity(parsed.Equation(2)->GetLeftTerm()),
              "Ambiguous");
    EXPECT_EQ(KOBWBModelHomogeneity::CheckHomogeneity(*parsed.Equation(0)), 0);
}

TEST(KOBWBModelHomogeneity, ChecksEquations) {
    EXPECT_EQ(Check(""), 0);
    EXPECT_EQ(Check("a = 2 km + 3 m;"), 0);
    EXPECT_EQ(Check("a = 30 deg; b = a + 1 rad;"), 0);
    EXPECT_EQ(Check("a = 2 km + 30 deg;"), 1);
    EXPECT_EQ(Check("a = 2 km * 3 km;"), 1);
    EXPECT_EQ(Check("a = 1 mm; a = 1 rad;"), 1);
    EXPECT_EQ(Check("y = sin(30 deg);"), 1);
    // A length equals a bare number, not a dimensionless expression.
    EXPECT_EQ(Check("x = 10 mm; x = 5;"), 0);
    EXPECT_EQ(Check("x = 10 mm; x = k * j;"), 1);
    EXPECT_EQ(Check("x = 10 mm; 5 = x;"), 1);
    EXPECT_EQ(Check("x = 10 mm; k * j = x;"), 0);
    EXPECT_EQ(Check("a = 10 deg; k * j = a;"), 1);
    // A single term has no right side to match.
    EXPECT_EQ(Check("x;"), 1);
    // The walk stops at the first inhomogeneous equation.
    ParsedModel parsed("a = 2 km + 30 deg; b = 1;");
    EXPECT_EQ(KOBWBModelHomogeneity::CheckHomogeneity(*parsed.Equation(0)), 1);
    EXPECT_EQ(KOBWBModelHomogeneity::CheckHomogeneity(*parsed.Equation(1)), 0);
}

TEST(KOBWBModelHomogeneity, TracesItsRulesAtLevelOne) {
    ParsedModel parsed("(2 km + 30 deg) / 2;");
    std::ostringstream text;
    KOBLVRStream stream(&text);
    KOBLVRGlobalParameters& parameters = GetGlobalParameters();
    parameters.SetTraceStream(&stream);
    parameters.SetTraceLevel(0);
    KOBWBModelHomogeneity::FillHomogeneity(parsed.Equation(0)->GetLeftTerm());
    EXPECT_EQ(text.str(), "");
    parameters.SetTraceLevel(1);
    KOBWBModelHomogeneity::FillHomogeneity(parsed.Equation(0)->GetLeftTerm());
    parameters.SetTraceStream(nullptr);
    parameters.SetTraceLevel(0);
    EXPECT_EQ(text.str(), " FillHomogeneity  :((2 km + 30 deg) / 2)\n"
                          " Homogeneity OpType =12\n"
                          " FillHomogeneity  :(2 km + 30 deg)\n"
                          " Homogeneity OpType =10\n"
                          " FillHomogeneity  :2 km => Distance\n"
                          " FillHomogeneity  :30 deg => Angle\n"
                          " Homogeneity Child1 :Distance\n"
                          " Homogeneity Child2 :Angle\n"
                          " for Sum et Minus, default case => Inhomogeneous\n"
                          " FillHomogeneity  :2 => None\n"
                          " Homogeneity Child1 :Inhomogeneous\n"
                          " Homogeneity Child2 :None\n"
                          " for Quotient, if one child is Inhomogeneous  => Inhomogeneous\n");
}
