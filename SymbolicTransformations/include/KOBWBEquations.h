#ifndef KOBWBEquations_h
#define KOBWBEquations_h

#include "KOBLVRArrayKOBLVRString.h"
#include "KOBLVRIntArray.h"
#include "KOBWBxExport.h"

class KOBLVRStream;
class KOBWBFactory;

// The replay text of a factory's equation system: its variables, its equations and
// its values, written as sections of a replay stream, and read back into a factory.
//
// Sections. A replay is a sequence of sections, each a line holding its name
// (beginning with "#!") followed by its content lines; no content line begins
// with "#!". The system takes four sections, in this order:
//
//   #!VARIABLES   one line per variable, in index order:
//                   <index> <name> fixed=<int> divided=<int> preferred=<real or none>
//                 e.g. 0 "x" fixed=0 divided=1 preferred=none
//   #!EQUATIONS   one line per equation, in the factory's order:
//                   <id> <name> <type> [<theoretical variable indices>] <root>
//                 e.g. 4 "eq4" <= [0,1] +(v0, *(I-2, v1))
//                 <type> is "=", "!=", "<=", "<", ">=", ">", "<minimize>",
//                 "<maximize>", "<undefined>" (or the code in decimal for a code
//                 outside the enumeration). Ids keep their gaps.
//   #!VALUES      one line per variable: <index> <value>, its current value
//   #!SIMPLIFY    (input form only, when the list is not empty) one equation id
//                 per line, in the order and with the repetitions given
//
// Names are in double quotes, with \\, \", \n, \r, \t and \xHH escapes. Integers
// are decimal; reals are the shortest decimal text that reads back as the same
// double, "inf", "-inf" or "nan", whatever the locale.
//
// Values, one word each:
//   U                      undefined
//   I<int>                 integer                 I-3
//   R<real>                real                    R0.1
//   II[<int>,<int>]        integer interval        II[0,10]
//   RI[<real>,<real>]      real interval           RI[-1.5,2]
//   IE<domain>             integer enumeration     IE{1,2,5}  IE[0,9]  IEany  IEnil
//   RE<domain>             real enumeration        RE{0.5,1}  RE[0,1]  REany  REnil
//                          ({...} a list, [a,b] an interval, any, nil)
//   B<boolean>             boolean                 BFalse BTrue BUndef BContr
//   F<n>/<d>pi<k>:<r>      exact fraction n/d x Pi^k, r its fourth field
//                                                  F1/6pi1:1 is Pi/6
//
// Expressions, in prefix form:
//   v<index>                       the variable of that index
//   <value>                        a constant
//   <head>(<expr>, <expr>, ...)    an operator over its children, in order; the head
//                                  is KOBWBGetExpressionTypeName of its code ("+",
//                                  "*", "/", "^", "root", "sqrt", "sin", "atan2",
//                                  "min", "not", "<=", "==", "=>", "if", ...)
//   step[<a>,<b>,<c>,<d>](<expr>)  a step with its four parameters
//   blackbox[<name>](<expr>, ...)  a call of the black box of that name
//   @<k>=<expr>                    the k-th node reached more than once (labels count
//                                  from 1 in the order of writing, across the whole
//                                  section), written in full the first time
//   @<k>                           that node again
//   null                           a missing root or child
// A sum, product, minimum or maximum may have fewer than two children.
//
// What is not written: the nodes' registered properties, value buffers and the
// expression values given to operators, node identity across sections (the
// predefined constants come back as plain constants of the same value), and what
// black boxes compute.
class KOBWBX_API KOBWBEquations {
public:
    enum Kind { Input = 1, Output = 2 };

    // The writer of factory's equation system in input or output form (any kind
    // but Output is the input form); equationsToSimplify (equation ids, may be null
    // or empty) is copied, and written in input form only.
    KOBWBEquations(KOBWBFactory& factory, int kind, const KOBLVRIntArray* equationsToSimplify = nullptr);

    // Adds the sections "#!VARIABLES", "#!EQUATIONS", "#!VALUES" and, in input form
    // with a non-empty list, "#!SIMPLIFY", in that order, to the stream's storage, in
    // the part KOBLVRStorage::Input for the input form and KOBLVRStorage::Output for
    // the output form. It does not write them: the caller adds its own sections and
    // closes the part with stream.WriteSections(part). Default names of variables
    // and equations are stored in them as they are written.
    void Write(KOBLVRStream& stream) const;

    // Rebuilds an equation system from replay text as WriteSections writes it, in
    // factory, which must have neither variables nor equations yet: variables with
    // their names, flags and values, equations with their ids, names, types,
    // theoretical variables and roots (shared nodes shared again). The text's first
    // part is read: it ends before the first section whose name was met already, so
    // that a replay holding an input part and then an output part reads as its
    // input. Lines before the first section are ignored.
    //
    // equationsToSimplify receives the ids of "#!SIMPLIFY" (empty without one);
    // otherNames and otherContents receive, in the order of the text, the name and
    // the content (its lines joined by "\n") of every other section of the part,
    // such as "#!MODE".
    //
    // A black-box call is rebuilt over the black box of that name that the caller
    // declared in factory beforehand (GetBlackBoxByName); reading fails when there
    // is none. An operator emptied of its children is rebuilt with a spare integer
    // constant 0 left in the factory.
    //
    // False for malformed text (a required section missing, a line or value that
    // does not parse, a variable index out of order, ids not ascending or more than
    // 2^24 of them missing in all, a label used before its node is complete, an
    // operator with the wrong number of children, an unknown black box), and when
    // factory is not empty. The factory may then hold part of the system; the output
    // arguments are meaningful only when the answer is true.
    static bool Read(const char* text, KOBWBFactory& factory, KOBLVRIntArray& equationsToSimplify,
                     KOBLVRArrayKOBLVRString& otherNames, KOBLVRArrayKOBLVRString& otherContents);

private:
    KOBWBFactory& m_factory;
    int m_kind;
    KOBLVRIntArray m_equationsToSimplify;
};

#endif
