#ifndef KOBWBGrammarActions_h
#define KOBWBGrammarActions_h

#include "KOBWBEquationType.h"
#include "KOBWBExpressionType.h"
#include "KOBWBLocation.h"
#include "KOBWBModelLists.h"
#include "KOBWBValue.h"

class KOBLVRIntArray;
class KOBWBModel;
class KOBWBNode;
class KOBWBParserMessenger;

// What the rules of the model grammar build. Every node a rule creates gets the
// location of the whole rule, a unit the location of its identifier. Every
// function accepts null nodes (from a creation that failed) and then builds
// nothing; a list of arguments it receives is deleted after use. The texts of
// identifiers belong to the scanner.

// The location of a rule: from the first to the last symbol, or the point after
// the previous symbol for an empty rule. Inline: the parser asks at every
// reduction.
inline void KOBWBJoinLocations(KOBWBLocation& current, const KOBWBLocation* symbols, int count) {
    if (count > 0) {
        current.SetLocation(symbols[1].GetFirstLine(), symbols[1].GetFirstColumn(),
                            symbols[count].GetLastLine(), symbols[count].GetLastColumn());
    } else {
        current.SetLocation(symbols[0].GetLastLine(), symbols[0].GetLastColumn(),
                            symbols[0].GetLastLine(), symbols[0].GetLastColumn());
    }
}
KOBWBLocation KOBWBSpan(const KOBWBLocation& first, const KOBWBLocation& last);

void KOBWBReportSyntaxError(KOBWBParserMessenger& messenger, const KOBWBLocation* location,
                            const char* message);

// Adds the equation and appends its id.
void KOBWBAddEquation(KOBWBModel& model, KOBLVRIntArray& ids, const KOBWBLocation& location,
                      KOBWBNode* left, int type, KOBWBNode* right);
void KOBWBAddTermEquation(KOBWBModel& model, KOBLVRIntArray& ids, KOBWBNode* term);
// "if (c) then (a R b) else (d S e);": a single-term equation holding
// IfThenElse(c, a R b, d S e), each branch a comparison node.
void KOBWBAddConditionalEquation(KOBWBModel& model, KOBLVRIntArray& ids,
                                 const KOBWBLocation& location, KOBWBNode* conditions,
                                 const KOBWBLocation& thenLocation, KOBWBNode* thenLeft,
                                 int thenType, KOBWBNode* thenRight,
                                 const KOBWBLocation& elseLocation, KOBWBNode* elseLeft,
                                 int elseType, KOBWBNode* elseRight);

// An integer or real number, with its unit when unitText is given.
KOBWBNode* KOBWBMakeNumber(KOBWBModel& model, const KOBWBLocation& location, int number,
                           const KOBWBLocation* unitLocation = nullptr,
                           const char* unitText = nullptr);
KOBWBNode* KOBWBMakeNumber(KOBWBModel& model, const KOBWBLocation& location, double number,
                           const KOBWBLocation* unitLocation = nullptr,
                           const char* unitText = nullptr);
// Pi, with its unit when unitText is given.
KOBWBNode* KOBWBMakePi(KOBWBModel& model, const KOBWBLocation& location,
                       const KOBWBLocation* unitLocation, const char* unitText);
// n Pi [unit] and (e) Pi [unit]: Product(factor, Pi [unit]).
KOBWBNode* KOBWBMakeTimesPi(KOBWBModel& model, const KOBWBLocation& location, KOBWBNode* factor,
                            const KOBWBLocation* unitLocation, const char* unitText);
// (e) unit: the unit is set on e itself.
KOBWBNode* KOBWBSetUnit(KOBWBNode* node, const KOBWBLocation& unitLocation, const char* unitText);
// The occurrence of the name written at that place.
KOBWBNode* KOBWBMakeVariable(KOBWBModel& model, const KOBWBLocation& location, const char* name);

KOBWBNode* KOBWBMakeUnary(KOBWBModel& model, const KOBWBLocation& location,
                          KOBWBExpressionType type, KOBWBNode* child);
KOBWBNode* KOBWBMakeBinary(KOBWBModel& model, const KOBWBLocation& location,
                           KOBWBExpressionType type, KOBWBNode* left, KOBWBNode* right);
KOBWBNode* KOBWBMakeIfThenElse(KOBWBModel& model, const KOBWBLocation& location,
                               KOBWBNode* conditions, KOBWBNode* thenNode, KOBWBNode* elseNode);
// "a == b" gives an Equal node; an inequality a LessEqual node whose comparison
// type is the inequality, the operands as written.
KOBWBNode* KOBWBMakeComparison(KOBWBModel& model, const KOBWBLocation& location, int relation,
                               KOBWBNode* left, KOBWBNode* right);
// A built-in function over the arguments, however many there are.
KOBWBNode* KOBWBMakeFunction(KOBWBModel& model, const KOBWBLocation& location,
                             KOBWBExpressionType type, KOBLVRListPKOBWBNode* arguments);
// A call of the black box of that name among blackBoxes, or, failing that, among
// those the model knows; a name found nowhere gives a call that the model check
// reports. Null arguments stand for "()".
KOBWBNode* KOBWBMakeCall(KOBWBModel& model, const KOBWBLocation& location, const char* name,
                         KOBLVRListPKOBWBNode* arguments, KOBLVRListPKOBWBBlackBox* blackBoxes);

// A new list of arguments, empty or holding first (even when null, so that the
// call fails to build).
KOBLVRListPKOBWBNode* KOBWBNoArguments();
KOBLVRListPKOBWBNode* KOBWBFirstArgument(KOBWBNode* first);
KOBLVRListPKOBWBNode* KOBWBAppendArgument(KOBLVRListPKOBWBNode* arguments, KOBWBNode* next);

#endif
