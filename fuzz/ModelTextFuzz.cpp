// Model text: any bytes are parsed, checked, judged for homogeneity, their reports
// explained, converted into a factory, and the converted equations evaluated over
// domains read from the text's own bytes.

#include "KOBWBx.h"

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    KOBWBModel model;
    KOBLVRIntArray ids;
    KOBWBParserMessenger messenger;
    KOBWBParser::Parse(text.c_str(), model, ids, messenger, nullptr);
    KOBWBModelCheck(model, messenger).Run();
    KOBWBModelHomogeneity::CheckHomogeneity(model);
    // The reports worded for the writer, read from the same bytes (past a NUL too).
    KOBWBModelReports::Errors(text, model, messenger);
    for (int i = 0; i < messenger.GetNbOfInvalidCharacters(); ++i) {
        int line = 0, column = 0;
        messenger.GetInvalidCharacter(i, line, column);
        KOBWBModelReports::InvalidCharacter(text, line, column);
    }
    for (int i = 0; i < ids.Size(); ++i)
        if (KOBWBEqNode* node = model.GetEquationById(ids[i]))
            KOBWBModelHomogeneity::CheckHomogeneity(*node);

    KOBWBFactory factory;
    KOBLVRIntArray converted = ids;
    KOBLVRListPKOBWBVarNode names;
    KOBLVRListPKOBWBVariable variables;
    model.FillFactory(factory, converted, -1, names, variables);
    for (int i = 0; i < variables.Size(); ++i) {
        const double lower = size ? data[i % size] % 16 - 8 : 0;
        variables[i]->SetExprValue(KOBWBValue(KOBWBCreateRealInterval(lower, lower + i % 3)));
    }
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation;
         equation = equation->GetNext())
        if (equation->GetRoot()) equation->GetRoot()->GetValue();
    return 0;
}
