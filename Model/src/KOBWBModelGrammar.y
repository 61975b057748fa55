/* Grammar of the model language: a list of equations and inequalities, each
   ended by ";". A syntax error abandons the equation up to the next ";". */

%code requires {
#include "KOBWBExpressionType.h"
#include "KOBWBLocation.h"
#include "KOBWBModelLists.h"

class KOBLVRIntArray;
class KOBWBModel;
class KOBWBNode;
class KOBWBParserMessenger;

// Locations and values are copied as plain bytes, which lets the parser grow
// its stacks up to their limit instead of stopping at their initial size.
#define KOBWBMODELLANGLTYPE_IS_TRIVIAL 1
}

%code {
#include "KOBWBGrammarActions.h"

int KOBWBModelLanglex(KOBWBMODELLANGSTYPE* value, KOBWBLocation* location, void* scanner);

static void KOBWBModelLangerror(KOBWBLocation* location, void*, KOBWBModel&, KOBLVRIntArray&,
                                KOBWBParserMessenger& messenger, KOBLVRListPKOBWBBlackBox*,
                                const char* message) {
    KOBWBReportSyntaxError(messenger, location, message);
}

#define YYLLOC_DEFAULT(Current, Rhs, N) KOBWBJoinLocations(Current, Rhs, N)
}

%define api.prefix {KOBWBModelLang}
%define api.pure full
%define api.location.type {KOBWBLocation}
%define parse.error verbose
%locations
%param {void* scanner}
%parse-param {KOBWBModel& model} {KOBLVRIntArray& ids} {KOBWBParserMessenger& messenger}
%parse-param {KOBLVRListPKOBWBBlackBox* blackBoxes}

%initial-action { @$.Reset(); }

%union {
    int integer;
    double real;
    const char* text;
    KOBWBExpressionType code;
    int relation;
    KOBWBNode* node;
    KOBLVRListPKOBWBNode* list;
}

%destructor { delete $$; } <list>

%token END 0 "end of input"
%token <code> TOKEN_BUILTIN_FUNC
%token <text> TOKEN_IDENTIFIER "identifier"
%token <integer> TOKEN_INTEGER "integer"
%token <real> TOKEN_REAL "real"
%token TOKEN_EQUAL "="
%token TOKEN_LT
%token TOKEN_LE
%token TOKEN_NE "!="
%token TOKEN_NOT "!"
%token TOKEN_EQEQ "=="
%token TOKEN_GT
%token TOKEN_GE
%token TOKEN_LEFT_BRACKET "left bracket"
%token TOKEN_RIGHT_BRACKET "right bracket"
%token TOKEN_EMPTYPAREN
%token TOKEN_PLUS "+"
%token TOKEN_MINUS "-"
%token TOKEN_TIMES "x"
%token TOKEN_DIVIDE "/"
%token TOKEN_COMMA
%token TOKEN_SEMICOLON "semi-colon"
%token TOKEN_HAT
%token TOKEN_AND
%token TOKEN_OR
%token TOKEN_IF
%token TOKEN_THEN
%token TOKEN_ELSE
%token TOKEN_PI "Pi"
%token UNARY_MINUS

%left "+" "-"
%left "x" "/"
%precedence UNARY_MINUS
%right TOKEN_HAT

%type <node> expression conditions condition
%type <relation> equation_type inequality_type boolean_relation
%type <list> function_args.opt function_args

%start model

%%

model:
    equations.opt
    ;

equations.opt:
    %empty
  | equations.opt equation
  ;

equation:
    expression "semi-colon"
        { KOBWBAddTermEquation(model, ids, $1); }
  | expression equation_type expression "semi-colon"
        { KOBWBAddEquation(model, ids, @$, $1, $2, $3); }
  | TOKEN_IF "left bracket" conditions "right bracket"
    TOKEN_THEN "left bracket" expression equation_type expression "right bracket"
    TOKEN_ELSE "left bracket" expression equation_type expression "right bracket" "semi-colon"
        { KOBWBAddConditionalEquation(model, ids, @$, $3,
                                      KOBWBSpan(@7, @9), $7, $8, $9,
                                      KOBWBSpan(@13, @15), $13, $14, $15); }
  | error "semi-colon"
  ;

equation_type:
    "="                 { $$ = KOBWBEqEqual; }
  | inequality_type     { $$ = $1; }
  ;

inequality_type:
    TOKEN_LT            { $$ = KOBWBEqLess; }
  | TOKEN_GT            { $$ = KOBWBEqGreater; }
  | TOKEN_LE            { $$ = KOBWBEqLessEqual; }
  | TOKEN_GE            { $$ = KOBWBEqGreaterEqual; }
  | "!="                { $$ = KOBWBEqNotEqual; }
  ;

expression:
    "integer" "Pi" "identifier"
        { $$ = KOBWBMakeTimesPi(model, @$, KOBWBMakeNumber(model, @$, $1), &@3, $3); }
  | "Pi" "identifier"
        { $$ = KOBWBMakePi(model, @$, &@2, $2); }
  | "integer" "identifier"
        { $$ = KOBWBMakeNumber(model, @$, $1, &@2, $2); }
  | "real" "identifier"
        { $$ = KOBWBMakeNumber(model, @$, $1, &@2, $2); }
  | "integer" "Pi"
        { $$ = KOBWBMakeTimesPi(model, @$, KOBWBMakeNumber(model, @$, $1), nullptr,
                                nullptr); }
  | "Pi"
        { $$ = KOBWBMakePi(model, @$, nullptr, nullptr); }
  | "integer"
        { $$ = KOBWBMakeNumber(model, @$, $1); }
  | "real"
        { $$ = KOBWBMakeNumber(model, @$, $1); }
  | "identifier"
        { $$ = KOBWBMakeVariable(model, @$, $1); }
  | "left bracket" expression "right bracket" "identifier"
        { $$ = KOBWBSetUnit($2, @4, $4); }
  | "left bracket" expression "right bracket" "Pi" "identifier"
        { $$ = KOBWBMakeTimesPi(model, @$, $2, &@5, $5); }
  | "left bracket" expression "right bracket" "Pi"
        { $$ = KOBWBMakeTimesPi(model, @$, $2, nullptr, nullptr); }
  | "left bracket" expression "right bracket"
        { $$ = $2; }
  | expression "+" expression
        { $$ = KOBWBMakeBinary(model, @$, KOBWBSumType, $1, $3); }
  | expression "-" expression
        { $$ = KOBWBMakeBinary(model, @$, KOBWBMinusType, $1, $3); }
  | "-" expression %prec UNARY_MINUS
        { $$ = KOBWBMakeUnary(model, @$, KOBWBOppositeType, $2); }
  | expression "x" expression
        { $$ = KOBWBMakeBinary(model, @$, KOBWBProductType, $1, $3); }
  | expression "/" expression
        { $$ = KOBWBMakeBinary(model, @$, KOBWBQuotientType, $1, $3); }
  | expression TOKEN_HAT expression
        { $$ = KOBWBMakeBinary(model, @$, KOBWBPowerType, $1, $3); }
  | TOKEN_IF "left bracket" conditions "right bracket"
    TOKEN_THEN "left bracket" expression "right bracket"
    TOKEN_ELSE "left bracket" expression "right bracket"
        { $$ = KOBWBMakeIfThenElse(model, @$, $3, $7, $11); }
  | TOKEN_BUILTIN_FUNC "left bracket" function_args.opt "right bracket"
        { $$ = KOBWBMakeFunction(model, @$, $1, $3); }
  | "identifier" "left bracket" function_args.opt "right bracket"
        { $$ = KOBWBMakeCall(model, @$, $1, $3, blackBoxes); }
  | "identifier" TOKEN_EMPTYPAREN
        { $$ = KOBWBMakeCall(model, @$, $1, nullptr, blackBoxes); }
  ;

conditions:
    condition
        { $$ = $1; }
  | conditions boolean_relation condition
        { $$ = KOBWBMakeBinary(model, @$, static_cast<KOBWBExpressionType>($2), $1, $3); }
  ;

condition:
    expression "==" expression
        { $$ = KOBWBMakeComparison(model, @$, KOBWBEqEqual, $1, $3); }
  | expression inequality_type expression
        { $$ = KOBWBMakeComparison(model, @$, $2, $1, $3); }
  | "left bracket" expression "==" expression "right bracket"
        { $$ = KOBWBMakeComparison(model, @$, KOBWBEqEqual, $2, $4); }
  | "left bracket" expression inequality_type expression "right bracket"
        { $$ = KOBWBMakeComparison(model, @$, $3, $2, $4); }
  | "!" "left bracket" expression "==" expression "right bracket"
        { $$ = KOBWBMakeComparison(model, @$, KOBWBEqEqual, $3, $5); }
  | "!" "left bracket" expression inequality_type expression "right bracket"
        { $$ = KOBWBMakeUnary(model, @$, KOBWBNotType,
                              KOBWBMakeComparison(model, @$, $4, $3, $5)); }
  ;

boolean_relation:
    TOKEN_AND           { $$ = KOBWBAndType; }
  | TOKEN_OR            { $$ = KOBWBOrType; }
  ;

function_args.opt:
    %empty
        { $$ = KOBWBNoArguments(); }
  | function_args
        { $$ = $1; }
  ;

function_args:
    expression
        { $$ = KOBWBFirstArgument($1); }
  | function_args TOKEN_COMMA expression
        { $$ = KOBWBAppendArgument($1, $3); }
  ;

%%
