#include "PrinterTestSupport.h"
#include "XmlChecker.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

const std::string mathOpen = "<math xmlns=\"http://www.w3.org/1998/Math/MathML\">";

// The element inside the <math> element of an expression.
std::string Inner(const KOBWBExpression* e) {
    const std::string ml = KOBWBEquationMLPrinter::ToMathML(e);
    if (ml.rfind(mathOpen, 0) != 0 || ml.size() < mathOpen.size() + 7) return "not a math element: " + ml;
    return ml.substr(mathOpen.size(), ml.size() - mathOpen.size() - 7);
}

::testing::AssertionResult WellFormed(const std::string& text) {
    std::string why;
    if (XmlChecker().Check(text, why)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << why;
}

struct Names {
    KOBWBFactory& f;
    explicit Names(KOBWBFactory& factory) : f(factory) {}
    KOBWBVariable* V(const char* name) {
        KOBWBVariable* v = f.CreateVariable();
        v->SetName(name);
        return v;
    }
    KOBWBExpression* I(int n) { return f.CreateIntegerConstant(n); }
    KOBWBExpression* Pi(int n, int d, int power = 1) {
        return f.CreateConstant(KOBWBValue(KOBWBCreateFraction(n, d, power, 1)));
    }
};

TEST(KOBWBEquationMLPrinter, WritesFormulasWithTheirTwoDimensionalForms) {
    KOBWBFactory f;
    Names n(f);
    KOBWBExpression* x = n.V("x");
    KOBWBExpression* y = n.V("y");
    KOBWBExpression* z = n.V("z");
    const std::string mx = "<mi>x</mi>", my = "<mi>y</mi>", mz = "<mi>z</mi>";
    const std::string plus = "<mo>+</mo>", minus = "<mo>&#x2212;</mo>", times = "<mo>&#x22C5;</mo>";
    const std::string pi = "<mi>&#x3C0;</mi>";
    auto row = [](const std::string& inside) { return "<mrow>" + inside + "</mrow>"; };
    auto bracketed = [&](const std::string& inside) { return row("<mo>(</mo>" + inside + "<mo>)</mo>"); };

    // Fraction bars, exponents and roots group their parts without brackets.
    EXPECT_EQ(Inner(f.CreateQuotient(f.CreateSum(x, y), f.CreatePower(x, f.CreateSum(y, n.I(1))))),
              "<mfrac>" + row(mx + plus + my) + "<msup>" + mx + row(my + plus + "<mn>1</mn>") + "</msup></mfrac>");
    EXPECT_EQ(Inner(f.CreateQuotient(x, f.CreateProduct(y, z))), "<mfrac>" + mx + row(my + times + mz) + "</mfrac>");
    EXPECT_EQ(Inner(f.CreatePower(x, n.I(-1))), "<msup>" + mx + row(minus + "<mn>1</mn>") + "</msup>");
    EXPECT_EQ(Inner(f.CreateSqrt(f.CreateSum(x, y))), "<msqrt>" + row(mx + plus + my) + "</msqrt>");
    EXPECT_EQ(Inner(f.CreateRoot(x, 3)), "<mroot>" + mx + "<mn>3</mn></mroot>");
    // Bases, factors and negations keep the text's brackets; a fraction needs
    // them only as a base.
    EXPECT_EQ(Inner(f.CreatePower(f.CreateQuotient(x, y), n.I(2))),
              "<msup>" + bracketed("<mfrac>" + mx + my + "</mfrac>") + "<mn>2</mn></msup>");
    EXPECT_EQ(Inner(f.CreatePower(f.CreatePower(x, y), z)),
              "<msup>" + bracketed("<msup>" + mx + my + "</msup>") + mz + "</msup>");
    EXPECT_EQ(Inner(f.CreatePower(x, f.CreatePower(y, z))), "<msup>" + mx + "<msup>" + my + mz + "</msup></msup>");
    EXPECT_EQ(Inner(f.CreatePower(n.I(-2), x)), "<msup>" + bracketed(row(minus + "<mn>2</mn>")) + mx + "</msup>");
    EXPECT_EQ(Inner(f.CreateProduct(f.CreateSum(x, y), z)), row(bracketed(row(mx + plus + my)) + times + mz));
    EXPECT_EQ(Inner(f.CreateSub(x, f.CreateSub(y, z))), row(mx + minus + bracketed(row(my + minus + mz))));
    EXPECT_EQ(Inner(f.CreateOpposite(f.CreateSum(x, y))), row(minus + bracketed(row(mx + plus + my))));
    EXPECT_EQ(Inner(f.CreateSub(x, f.CreateQuotient(n.I(3), y))), row(mx + minus + "<mfrac><mn>3</mn>" + my + "</mfrac>"));
    EXPECT_EQ(Inner(f.CreateProduct(x, n.Pi(1, 4))), row(mx + times + "<mfrac>" + pi + "<mn>4</mn></mfrac>"));
    // Function application, several arguments, conditions.
    EXPECT_EQ(Inner(f.CreateSin(x)), row("<mi>sin</mi><mo>&#x2061;</mo><mo>(</mo>" + mx + "<mo>)</mo>"));
    KOBWBExpression* three[] = {x, y, z};
    EXPECT_EQ(Inner(f.CreateOperator(KOBWBMaxType, 3, three)),
              row("<mi>max</mi><mo>&#x2061;</mo><mo>(</mo>" + mx + "<mo>,</mo>" + my + "<mo>,</mo>" + mz + "<mo>)</mo>"));
    EXPECT_EQ(Inner(f.CreateIfThenElse(f.CreateGreater(x, n.I(1)), y, z)),
              row("<mtext>if</mtext><mo>(</mo>" + row(mx + "<mo>&gt;</mo><mn>1</mn>") +
                  "<mo>)</mo><mtext>then</mtext><mo>(</mo>" + my + "<mo>)</mo><mtext>else</mtext><mo>(</mo>" + mz +
                  "<mo>)</mo>"));

    // Exact constants as the text writes them: fractions and multiples of Pi.
    EXPECT_EQ(Inner(f.CreateConstantPi()), pi);
    EXPECT_EQ(Inner(n.Pi(3, 2)), "<mfrac>" + row("<mn>3</mn><mo>&#x2062;</mo>" + pi) + "<mn>2</mn></mfrac>");
    EXPECT_EQ(Inner(n.Pi(-1, 6)), row(minus + "<mfrac>" + pi + "<mn>6</mn></mfrac>"));
    EXPECT_EQ(Inner(n.Pi(1, 3, 0)), "<mfrac><mn>1</mn><mn>3</mn></mfrac>");
    EXPECT_EQ(Inner(n.Pi(1, 4, 2)), "<mfrac><msup>" + pi + "<mn>2</mn></msup><mn>4</mn></mfrac>");
    EXPECT_EQ(Inner(n.Pi(1, 2, -1)), "<mfrac><mn>1</mn>" + row("<mn>2</mn><mo>&#x2062;</mo>" + pi) + "</mfrac>");
    EXPECT_EQ(Inner(f.CreateRealConstant(-2.5e-300)), row(minus + "<mn>2.5e-300</mn>"));
    // Values the language cannot write.
    EXPECT_EQ(Inner(f.CreateConstant(KOBWBValue(KOBWBCreateRealInterval(-1, 2.5)))),
              row("<mo>[</mo>" + row(minus + "<mn>1.0</mn>") + "<mo>,</mo><mn>2.5</mn><mo>]</mo>"));
    const int elements[] = {3, 1, 2};
    KOBWBValue enumeration;
    enumeration.Set(KOBWBIntegerEnum(KOBWBEnumList));
    enumeration.Set(3, elements);
    EXPECT_EQ(Inner(f.CreateConstant(enumeration)),
              row("<mo>{</mo><mn>1</mn><mo>,</mo><mn>2</mn><mo>,</mo><mn>3</mn><mo>}</mo>"));
    EXPECT_EQ(Inner(f.CreateConstant(KOBWBValue(KOBWBTrue))), "<mi>True</mi>");
    // Names are escaped; what is no UTF-8 is replaced.
    EXPECT_EQ(Inner(n.V("a<b&\"c\xff")), "<mi>a&lt;b&amp;&quot;c&#xFFFD;</mi>");
    EXPECT_EQ(Inner(nullptr), "<merror><mtext>null</mtext></merror>");

    // Equations with their two sides; a factory as one document.
    KOBWBFactory g;
    Names m(g);
    KOBWBVariable* a = m.V("a");
    KOBWBVariable* b = m.V("b");
    KOBWBExpression* terms[] = {a, g.CreateProduct(m.I(2), b), m.I(-10)};
    g.AddEquation(g.CreateSum(3, terms), KOBWBEqLessEqual);
    g.AddEquation(g.CreateProduct(a, b), KOBWBEqNotEqual);
    g.AddEquation(g.CreateSqrt(a), KOBWBEqUndefined);
    EXPECT_EQ(KOBWBEquationMLPrinter::ToMathML(g),
              "<equations count=\"3\">\n" + mathOpen +
                  row("<mi>a</mi>" + plus + row("<mn>2</mn>" + times + "<mi>b</mi>") +
                      "<mo>&#x2264;</mo><mn>10</mn>") +
                  "</math>\n" + mathOpen + row(row("<mi>a</mi>" + times + "<mi>b</mi>") + "<mo>&#x2260;</mo><mn>0</mn>") +
                  "</math>\n" + mathOpen + row("<msqrt><mi>a</mi></msqrt>") + "</math>\n</equations>\n");
    EXPECT_EQ(KOBWBEquationMLPrinter::ToMathML(static_cast<const KOBWBEquation*>(nullptr)), "");
}

// Every model under tests/data that converts, and generated graphs with odd
// names, print as well-formed documents; xmllint confirms it where installed.
TEST(KOBWBEquationMLPrinter, EverythingPrintedIsWellFormed) {
    std::vector<std::string> documents;
    int converted = 0;
    for (const auto& entry : std::filesystem::directory_iterator(KOBWBX_TEST_DATA)) {
        if (entry.path().extension() != ".model") continue;
        std::ifstream file(entry.path(), std::ios::binary);
        std::stringstream text;
        text << file.rdbuf();
        KOBWBFactory factory;
        if (FillFromText(text.str(), factory) == 0) ++converted;
        documents.push_back(KOBWBEquationMLPrinter::ToMathML(factory));
    }
    EXPECT_GT(converted, 0);
    for (unsigned seed = 1; seed <= 30; ++seed) {
        KOBWBFactory factory;
        RandomGraphs graphs(factory, seed);
        KOBWBVariable* odd = factory.CreateVariable();
        odd->SetName("x<&>'\"\x01\xc3\xa9\xe2\x82\xac\xed\xa0\x80\xf0\x9f\x98\x80\xc0\xaf\xff");
        KOBWBBBx* box = new KOBWBBBx;
        box->SetName("f&<g>\x80");
        KOBWBExpression* arguments[] = {odd, graphs.Make(3)};
        KOBWBExpression* call = factory.DeclareBlackBox(box, 2, arguments, 1);
        for (int i = 0; i < 4; ++i) factory.AddEquation(graphs.Make(5), graphs.Relation(), graphs.Make(3));
        factory.AddEquation(factory.CreateSum(call, factory.CreateRoot(graphs.Make(2), odd)), KOBWBEqEqual);
        factory.AddEquation(factory.CreateIfThenElse(factory.CreateLessEqual(odd, graphs.Make(2)),
                                                     factory.CreateEqual(odd, graphs.Make(2)),
                                                     factory.CreateNot(factory.CreateEqual(call, odd))),
                            KOBWBEqUndefined);
        documents.push_back(KOBWBEquationMLPrinter::ToMathML(factory));
    }
    std::string all = "<documents>";
    for (const std::string& document : documents) {
        EXPECT_TRUE(WellFormed(document));
        all += document;
    }
    all += "</documents>";
    EXPECT_FALSE(WellFormed("<mrow><mfrac><mi>x</mi></mfrac></mrow>"));
    EXPECT_FALSE(WellFormed("<mi>a&b</mi>"));

    if (std::system("xmllint --version > /dev/null 2>&1") != 0) return;
    const std::string path = testing::TempDir() + "kobwbx-mathml-check.xml";
    std::ofstream(path) << all;
    EXPECT_EQ(std::system(("xmllint --noout " + path).c_str()), 0);
    std::remove(path.c_str());
}

TEST(KOBWBEquationMLPrinter, WritesTheGraphAsJsonWithSharedNodesOnce) {
    KOBWBFactory f;
    KOBWBExpression* shared = BuildSharedSine(f);

    std::string json;
    KOBWBEquationMLPrinter::PrintJson(f, json);
    EXPECT_EQ(Count(json, "\"type\": 19"), 1u) << json;
    EXPECT_NE(json.find("{\"id\": 0, \"type\": 1, \"op\": \"variable\", \"name\": \"x\", \"value\": \"0.0\"}"),
              std::string::npos)
        << json;
    EXPECT_NE(json.find("\"value\": \"Pi/4\""), std::string::npos) << json;
    EXPECT_NE(json.find("\"relation\": \"<=\", \"root\": 5, \"text\": \"sin(x)*(Pi/4) <= 0;\""), std::string::npos)
        << json;

    KOBWBFactory empty;
    std::string nothing;
    KOBWBEquationMLPrinter::PrintJson(empty, nothing);
    EXPECT_EQ(nothing, "{\"nodes\": [\n], \"equations\": [\n]}\n");

    std::string expression;
    KOBWBEquationMLPrinter::PrintJson(f.CreateSum(shared, shared), expression);
    EXPECT_EQ(expression, "{\"nodes\": [\n"
                          "  {\"id\": 0, \"type\": 1, \"op\": \"variable\", \"name\": \"x\", \"value\": \"0.0\"},\n"
                          "  {\"id\": 1, \"type\": 19, \"op\": \"sin\", \"value\": \"0.0\", \"children\": [0]},\n"
                          "  {\"id\": 2, \"type\": 10, \"op\": \"+\", \"children\": [1, 1]}\n"
                          "], \"root\": 2}\n");
    std::string none;
    KOBWBEquationMLPrinter::PrintJson(static_cast<const KOBWBExpression*>(nullptr), none);
    EXPECT_EQ(none, "{\"nodes\": [\n], \"root\": -1}\n");
}

TEST(KOBWBEquationMLPrinter, PrintsDeepGraphsWithoutRecursion) {
    KOBWBFactory f;
    Names n(f);
    KOBWBExpression* x = n.V("x");
    KOBWBExpression* sums = x;
    KOBWBExpression* powers = x;
    KOBWBExpression* quotients = x;
    for (int i = 0; i < 200000; ++i) {
        sums = f.CreateSum(sums, x);
        powers = f.CreatePower(x, powers);
        quotients = f.CreateQuotient(quotients, x);
    }
    const std::string ml = KOBWBEquationMLPrinter::ToMathML(sums) + KOBWBEquationMLPrinter::ToMathML(powers) +
                           KOBWBEquationMLPrinter::ToMathML(quotients);
    EXPECT_EQ(Count(ml, "<msup>"), 200000u);
    EXPECT_EQ(Count(ml, "<mfrac>"), 200000u);
    EXPECT_EQ(Count(ml, "<mi>x</mi>"), 3u * 200001u);
    std::string json;
    KOBWBEquationMLPrinter::PrintJson(quotients, json);
    EXPECT_EQ(Count(json, "\"op\": \"/\""), 200000u);
}

} // namespace
