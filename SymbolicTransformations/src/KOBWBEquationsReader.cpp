#include "KOBWBEquations.h"

#include "KOBWBEquation.h"
#include "KOBWBFactory.h"
#include "KOBWBReplayExpressions.h"
#include "KOBWBReplayText.h"
#include "KOBWBVariable.h"

#include <charconv>
#include <cstring>
#include <string>
#include <vector>

// The reading half of the replay text; writing is in KOBWBEquations.cpp.

using kobwb::replay::TextCursor;

namespace {

constexpr const char* variablesSection = "#!VARIABLES";
constexpr const char* equationsSection = "#!EQUATIONS";
constexpr const char* valuesSection = "#!VALUES";
constexpr const char* simplifySection = "#!SIMPLIFY";

// How many equation ids may be missing, in all: each is used up by an equation
// made and removed.
constexpr long long maxMissingIds = 1LL << 24;

struct Section {
    std::string name;
    std::vector<std::string> lines;
};

// The sections of the text's first part: it ends where a section name comes again.
std::vector<Section> FirstPart(const char* text) {
    std::vector<Section> sections;
    for (const char* position = text; *position;) {
        const char* end = std::strchr(position, '\n');
        if (!end) end = position + std::strlen(position);
        std::string line(position, end);
        position = *end ? end + 1 : end;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.compare(0, 2, "#!") != 0) {
            if (!sections.empty()) sections.back().lines.push_back(std::move(line));
            continue;
        }
        for (const Section& section : sections)
            if (section.name == line) return sections;
        sections.push_back({std::move(line), {}});
    }
    return sections;
}

const Section* Find(const std::vector<Section>& sections, const char* name) {
    for (const Section& section : sections)
        if (section.name == name) return &section;
    return nullptr;
}

// Calls read on a cursor over each line that is not blank, with the count of those
// read before; false as soon as read is.
template <class Read>
bool ForEachLine(const Section& section, Read read) {
    int count = 0;
    for (const std::string& line : section.lines) {
        TextCursor in(line.data(), line.data() + line.size());
        if (in.AtEnd()) continue;
        if (!read(in, count++)) return false;
    }
    return true;
}

bool ReadVariable(TextCursor& in, int expectedIndex, KOBWBFactory& factory) {
    int index = -1;
    int fixed = 0;
    int divided = 0;
    double preferred = 0.0;
    std::string name;
    if (!in.ReadInteger(index) || index != expectedIndex || !in.ReadQuoted(name) || !in.AcceptWord("fixed=") ||
        !in.ReadInteger(fixed) || fixed < 0 || fixed > 255 || !in.AcceptWord("divided=") ||
        !in.ReadInteger(divided) || !in.AcceptWord("preferred="))
        return false;
    const bool hasPreferred = !in.AcceptWord("none");
    if ((hasPreferred && !in.ReadReal(preferred)) || !in.AtEnd()) return false;
    KOBWBVariable* variable = factory.CreateVariable();
    if (!variable) return false;
    variable->SetName(name.c_str());
    variable->Fix(static_cast<unsigned char>(fixed));
    variable->SetDividedFlag(divided);
    if (hasPreferred) variable->SetPreferedValue(preferred);
    return true;
}

bool EquationType(const std::string& word, KOBWBEquationType& type) {
    for (int code = KOBWBEqEqual; code <= KOBWBEqMaximize; ++code)
        if (word == KOBWBGetEquationTypeText(static_cast<KOBWBEquationType>(code))) {
            type = static_cast<KOBWBEquationType>(code);
            return true;
        }
    if (word == "<undefined>") {
        type = KOBWBEqUndefined;
        return true;
    }
    int code = 0;
    const char* end = word.data() + word.size();
    const std::from_chars_result result = std::from_chars(word.data(), end, code);
    type = static_cast<KOBWBEquationType>(code);
    return result.ec == std::errc() && result.ptr == end;
}

bool ReadIndices(TextCursor& in, KOBLVRIntArray& indices) {
    if (!in.Accept('[')) return false;
    if (in.Accept(']')) return true;
    do {
        int index = 0;
        if (!in.ReadInteger(index)) return false;
        indices.Append(index);
    } while (in.Accept(','));
    return in.Accept(']');
}

// Adds the equation under the given id, using up the ids below it that the
// factory has not given yet by equations made and removed at once. An equation
// without a root is made over a stand-in constant, then emptied.
KOBWBEquation* AddWithId(KOBWBFactory& factory, KOBWBExpression* root, KOBWBEquationType type, int id) {
    KOBWBExpression* made = root ? root : factory.CreateIntegerConstant(0);
    KOBWBEquation* equation = factory.AddEquation(made, type);
    while (equation && equation->GetId() < id) {
        factory.RemoveEquation(equation);
        equation = factory.AddEquation(made, type);
    }
    if (!equation || equation->GetId() != id) return nullptr;
    if (!root) equation->SetRoot(nullptr);
    return equation;
}

bool ReadEquations(const Section& section, KOBWBFactory& factory) {
    kobwb::replay::ExpressionReader expressions(factory);
    long long previous = -1;
    return ForEachLine(section, [&](TextCursor& in, int read) {
        int id = 0;
        std::string name;
        std::string typeWord;
        KOBWBEquationType type = KOBWBEqUndefined;
        KOBLVRIntArray theoretical;
        KOBWBExpression* root = nullptr;
        if (!in.ReadInteger(id) || id <= previous || id - read > maxMissingIds || !in.ReadQuoted(name) ||
            !in.ReadWord(typeWord) || !EquationType(typeWord, type) || !ReadIndices(in, theoretical) ||
            !expressions.Read(in, root) || !in.AtEnd())
            return false;
        KOBWBEquation* equation = AddWithId(factory, root, type, id);
        if (!equation) return false;
        equation->SetName(name.c_str());
        equation->SetTheoreticalVarList(&theoretical);
        previous = id;
        return true;
    });
}

bool ReadValue(TextCursor& in, KOBWBFactory& factory) {
    int index = -1;
    KOBWBValue value;
    if (!in.ReadInteger(index) || !in.ReadValue(value) || !in.AtEnd()) return false;
    KOBWBVariable* variable = factory.GetVariable(index);
    if (!variable) return false;
    variable->SetExprValue(value);
    return true;
}

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (size_t i = 0; i < lines.size(); ++i) {
        if (i > 0) text += '\n';
        text += lines[i];
    }
    return text;
}

} // namespace

bool KOBWBEquations::Read(const char* text, KOBWBFactory& factory, KOBLVRIntArray& equationsToSimplify,
                          KOBLVRArrayKOBLVRString& otherNames, KOBLVRArrayKOBLVRString& otherContents) {
    equationsToSimplify.SetDimension(0);
    otherNames.RemoveAll();
    otherContents.RemoveAll();
    if (!text || factory.GetNbOfVariables() > 0 || factory.GetNbOfEquations() > 0) return false;
    const std::vector<Section> sections = FirstPart(text);
    const Section* variables = Find(sections, variablesSection);
    const Section* equations = Find(sections, equationsSection);
    const Section* values = Find(sections, valuesSection);
    const Section* simplify = Find(sections, simplifySection);
    if (!variables || !equations || !values) return false;
    const bool read =
        ForEachLine(*variables, [&factory](TextCursor& in, int index) { return ReadVariable(in, index, factory); }) &&
        ReadEquations(*equations, factory) &&
        ForEachLine(*values, [&factory](TextCursor& in, int) { return ReadValue(in, factory); }) &&
        (!simplify || ForEachLine(*simplify, [&equationsToSimplify](TextCursor& in, int) {
             int id = 0;
             if (!in.ReadInteger(id) || !in.AtEnd()) return false;
             equationsToSimplify.Append(id);
             return true;
         }));
    if (!read) return false;
    for (const Section& section : sections) {
        if (&section == variables || &section == equations || &section == values || &section == simplify) continue;
        otherNames.Append(section.name.c_str());
        otherContents.Append(Joined(section.lines).c_str());
    }
    return true;
}
