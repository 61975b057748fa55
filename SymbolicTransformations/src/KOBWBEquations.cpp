#include "KOBWBEquations.h"

#include "KOBLVRStream.h"
#include "KOBWBEquation.h"
#include "KOBWBFactory.h"
#include "KOBWBReplayExpressions.h"
#include "KOBWBReplayText.h"
#include "KOBWBVariable.h"

#include <string>
#include <vector>

// The writing half of the replay text; reading is in KOBWBEquationsReader.cpp.

using kobwb::replay::AppendInteger;

namespace {

// Starts a new line of a section's content: lines are separated, not ended, so
// that the stream's own end of line closes the last one.
void NewLine(std::string& text) {
    if (!text.empty()) text += '\n';
}

std::string VariablesText(KOBWBFactory& factory) {
    std::string text;
    for (int i = 0; i < factory.GetNbOfVariables(); ++i) {
        KOBWBVariable* variable = factory.GetVariable(i);
        NewLine(text);
        AppendInteger(text, i);
        text += ' ';
        kobwb::replay::AppendQuoted(text, variable->GetName().str());
        text += " fixed=";
        AppendInteger(text, variable->IsFixed());
        text += " divided=";
        AppendInteger(text, variable->GetDividedFlag());
        text += " preferred=";
        double preferred = 0.0;
        if (variable->GetPreferedValue(preferred))
            kobwb::replay::AppendReal(text, preferred);
        else
            text += "none";
    }
    return text;
}

void AppendEquationType(std::string& text, KOBWBEquationType type) {
    const char* relation = KOBWBGetEquationTypeText(type);
    if (*relation)
        text += relation;
    else if (type == KOBWBEqUndefined)
        text += "<undefined>";
    else
        AppendInteger(text, type);
}

std::string EquationsText(KOBWBFactory& factory) {
    std::vector<KOBWBExpression*> roots;
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = equation->GetNext())
        roots.push_back(equation->GetRoot());
    kobwb::replay::ExpressionWriter writer(roots);
    std::string text;
    KOBLVRIntArray theoretical;
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = equation->GetNext()) {
        NewLine(text);
        AppendInteger(text, equation->GetId());
        text += ' ';
        kobwb::replay::AppendQuoted(text, equation->GetName().str());
        text += ' ';
        AppendEquationType(text, equation->GetType());
        text += " [";
        equation->GetTheoreticalVarList(&theoretical);
        for (int i = 0; i < theoretical.Size(); ++i) {
            if (i > 0) text += ',';
            AppendInteger(text, theoretical[i]);
        }
        text += "] ";
        writer.Append(text, equation->GetRoot());
    }
    return text;
}

std::string ValuesText(KOBWBFactory& factory) {
    std::string text;
    for (int i = 0; i < factory.GetNbOfVariables(); ++i) {
        NewLine(text);
        AppendInteger(text, i);
        text += ' ';
        kobwb::replay::AppendValue(text, factory.GetVariable(i)->GetExprValue());
    }
    return text;
}

std::string SimplifyText(const KOBLVRIntArray& ids) {
    std::string text;
    for (int i = 0; i < ids.Size(); ++i) {
        NewLine(text);
        AppendInteger(text, ids[i]);
    }
    return text;
}

} // namespace

KOBWBEquations::KOBWBEquations(KOBWBFactory& factory, int kind, const KOBLVRIntArray* equationsToSimplify)
    : m_factory(factory), m_kind(kind) {
    if (equationsToSimplify) m_equationsToSimplify = *equationsToSimplify;
}

void KOBWBEquations::Write(KOBLVRStream& stream) const {
    const bool input = m_kind != Output;
    const KOBLVRStorage::ReplayPart part = input ? KOBLVRStorage::Input : KOBLVRStorage::Output;
    KOBLVRStorage& storage = stream.GetStorage();
    storage.AddSection("#!VARIABLES", "", VariablesText(m_factory).c_str(), part, 1);
    storage.AddSection("#!EQUATIONS", "", EquationsText(m_factory).c_str(), part, 2);
    storage.AddSection("#!VALUES", "", ValuesText(m_factory).c_str(), part, 3);
    if (input && m_equationsToSimplify.Size() > 0)
        storage.AddSection("#!SIMPLIFY", "", SimplifyText(m_equationsToSimplify).c_str(), part, 4);
}
