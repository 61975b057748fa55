#include "KOBWBParser.h"

#include "KOBWBModelCheck.h"
#include "KOBWBModelGrammar.h"
#include "KOBWBModelScannerSupport.h"
#include "KOBWBParserMessenger.h"

// The scanner's interface needs the token value and location types by the
// names it was written with.
typedef KOBWBMODELLANGSTYPE YYSTYPE;
typedef KOBWBLocation YYLTYPE;
#include "KOBWBModelScanner.h"

namespace {

int Finish(yyscan_t scanner, KOBWBModel& model, KOBWBParserMessenger& messenger) {
    KOBWBModelCheck(model, messenger).Run();
    KOBWBModelLanglex_destroy(scanner);
    return messenger.GetErrorNumber();
}

} // namespace

int KOBWBParser::Parse(FILE* file, KOBWBModel& model, KOBLVRIntArray& ids,
                       KOBWBParserMessenger& messenger, KOBLVRListPKOBWBBlackBox* blackBoxes) {
    KOBWBScanContext context(model, messenger);
    yyscan_t scanner = nullptr;
    if (KOBWBModelLanglex_init_extra(&context, &scanner) != 0) return messenger.GetErrorNumber();
    if (file) {
        KOBWBModelLangset_in(file, scanner);
        KOBWBModelLangparse(scanner, model, ids, messenger, blackBoxes);
    }
    return Finish(scanner, model, messenger);
}

int KOBWBParser::Parse(const char* text, KOBWBModel& model, KOBLVRIntArray& ids,
                       KOBWBParserMessenger& messenger, KOBLVRListPKOBWBBlackBox* blackBoxes) {
    KOBWBScanContext context(model, messenger);
    yyscan_t scanner = nullptr;
    if (KOBWBModelLanglex_init_extra(&context, &scanner) != 0) return messenger.GetErrorNumber();
    if (text) {
        YY_BUFFER_STATE buffer = KOBWBModelLang_scan_string(text, scanner);
        KOBWBModelLangparse(scanner, model, ids, messenger, blackBoxes);
        KOBWBModelLang_delete_buffer(buffer, scanner);
    }
    return Finish(scanner, model, messenger);
}
