#include "KOBWBModelReports.h"

#include "KOBWBEqNode.h"
#include "KOBWBLocation.h"
#include "KOBWBMessageDetail.h"
#include "KOBWBModel.h"
#include "KOBWBParserMessenger.h"
#include "KOBWBTextPlaces.h"
#include "KOBWBUnitConflicts.h"

namespace {

const std::string inconsistentUnit = "semantic error, inconsistent unit";

// Moves a report of inconsistent units to the first conflict found in its
// equation that no other report took, and adds what the conflict is.
void ExplainUnits(std::vector<kobwb::UnitConflict>& conflicts, KOBWBModelReport& report) {
    for (auto conflict = conflicts.begin(); conflict != conflicts.end(); ++conflict) {
        if (!conflict->equation->GetLocation().Contains(report.line, report.column - 1)) continue;
        report.line = conflict->line;
        report.column = conflict->column;
        report.message += ": " + conflict->detail;
        conflicts.erase(conflict);
        return;
    }
}

} // namespace

std::vector<KOBWBModelReport> KOBWBModelReports::Errors(const std::string& text, const KOBWBModel& model,
                                                        const KOBWBParserMessenger& messenger) {
    const kobwb::TextPlaces places(text);
    std::vector<KOBWBModelReport> reports;
    std::vector<kobwb::UnitConflict> conflicts;
    bool conflictsFound = false;
    for (int i = 0; i < messenger.GetErrorNumber(); ++i) {
        int code = 0;
        KOBWBLocation location;
        messenger.GetError(i, code, location);
        KOBWBModelReport report{location.GetFirstLine(), location.GetFirstColumn() + 1,
                                messenger.GetErrorMessage(i).str(), code};
        if (report.message == inconsistentUnit) {
            if (!conflictsFound) conflicts = kobwb::FindUnitConflicts(model, places);
            conflictsFound = true;
            ExplainUnits(conflicts, report);
        } else {
            kobwb::DetailReport(places, report);
        }
        reports.push_back(std::move(report));
    }
    return reports;
}

std::string KOBWBModelReports::InvalidCharacter(const std::string& text, int line, int column) {
    return kobwb::InvalidCharacterMessage(kobwb::TextPlaces(text), line, column);
}
