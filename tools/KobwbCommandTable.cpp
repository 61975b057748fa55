#include "KobwbCommandLine.h"
#include "KobwbCommands.h"

namespace kobwb_tool {

const std::vector<CommandRow>& Commands() {
    static const std::vector<CommandRow> rows = {
        {"check", "--json", Files::Many, "parse and check models; problems as FILE:LINE:COL: lines",
         "usage: kobwb check FILE... [--json]\n"
         "Parses each model, checks its units and the homogeneity of its equations, and\n"
         "writes each problem as FILE:LINE:COL: error|warning: message (line and column\n"
         "from 1) on standard error; with --json, one JSON list of the files and their\n"
         "problems on standard output (a file that cannot be read is listed with\n"
         "\"unreadable\" and the reason). A model without equations is a warning. Exit\n"
         "status 0 when clean, 1 when problems were found, 2 on a usage or input error.\n"
         "FILE - reads standard input.\n",
         Check},
        {"eval", "--domain= --json", Files::One, "evaluate every equation over variable domains",
         "usage: kobwb eval FILE [--domain NAME=[LOW,HIGH] | --domain NAME=VALUE]... [--json]\n"
         "Evaluates every equation's root over the domains given (other variables range\n"
         "over everything) and tells whether the equation can still hold. Domains are in\n"
         "the factory's units, millimetres and radians.\n",
         Eval},
        {"print", "--format=", Files::One, "write a model's equations in the model language",
         "usage: kobwb print FILE [--format text|mathml|json|dot]\n"
         "Writes the model's equations, as converted into a factory: in the model language\n"
         "(text, the default), as presentation MathML, or their graph as JSON or Graphviz\n"
         "DOT, shared nodes once.\n",
         Print},
        {"diff", "--by= --raw --json", Files::One, "differentiate every equation by a variable",
         "usage: kobwb diff FILE --by NAME [--raw] [--json]\n"
         "Writes the derivative of every equation's root by the variable NAME, simplified\n"
         "(terms collected, zero terms dropped); --raw writes the graph differentiation\n"
         "makes, as it is.\n",
         Diff},
        {"simplify", "--mode=", Files::One, "run the symbolic transformations",
         "usage: kobwb simplify FILE [--mode N]\n"
         "Runs the symbolic transformations with mode N and writes the equations that\n"
         "result, then each variable eliminated as NAME := EXPRESSION, then, when the\n"
         "inequalities were judged, the verdict (exit status 1 when inconsistent).\n"
         "Mode bits (add them up, or join them with +: 2+4+16; 4 when no mode is given):\n"
         "   1  mark the linear and the constant sub-expressions\n"
         "   2  eliminate variables through the linear equations (sets bit 1)\n"
         "   4  simplify each equation; an equality that is exactly 0 is removed\n"
         "   8  write sums and products two operands at a time\n"
         "  16  with 2: judge the constant inequalities left (consistent or not)\n"
         "So 6 eliminates and simplifies, 22 also judges the inequalities.\n",
         Simplify},
        {"classify", "--json", Files::One, "tell linear, quadratic and other equations apart",
         "usage: kobwb classify FILE [--json]\n"
         "Tells for every equation whether its root is linear, quadratic or neither.\n",
         Classify},
        {"contract", "--domain= --json", Files::One, "narrow the variables' domains with the equations",
         "usage: kobwb contract FILE [--domain NAME=[LOW,HIGH] | --domain NAME=VALUE]... [--json]\n"
         "Narrows the variables' domains with the equations (other variables start from\n"
         "every real) and writes the outcome and every variable's domain, lengths in mm\n"
         "and angles in deg where the model tells them (domains are given in the\n"
         "factory's units, millimetres and radians). When the system has no solution in\n"
         "the domains, names the equations that cannot hold together there instead, with\n"
         "exit status 1.\n",
         Contract},
        {"solve", "--start= --fix= --domain= --all --width= --json", Files::One,
         "move the variables until the equations hold, or find every solution",
         "usage: kobwb solve FILE [--start FILE | --start NAME=VALUE]... [--fix NAME]...\n"
         "                        [--domain NAME=[LOW,HIGH]]... [--json]\n"
         "       kobwb solve FILE --all --domain NAME=[LOW,HIGH]... [--width W] [--json]\n"
         "Solves the equalities from the start values (NAME = VALUE lines of a start file,\n"
         "or NAME=VALUE, in the model's units: mm and deg; a variable without a start\n"
         "begins at 0, or at the middle of its --domain, which also bounds it), moving the\n"
         "variables as little as it can; --fix keeps a variable at its start. Writes the\n"
         "status, the values in the model's units, the degrees of freedom and the free\n"
         "variables, and names redundant and conflicting equations by model line. Exit\n"
         "status 0 when solved, 1 when not, 2 on bad input.\n"
         "With --all: every solution in the domains (each variable needs one), each in a\n"
         "box narrower than W (default 1e-8) with \"proved\" when it holds exactly one\n"
         "solution, the boxes left undecided, and whether the search was complete (exit\n"
         "status 0 when it was).\n",
         Solve},
        {"dof", "--start= --fix= --domain= --json", Files::One, "degrees of freedom, redundant and conflicting equations",
         "usage: kobwb dof FILE [--start FILE | --start NAME=VALUE]... [--fix NAME]... [--json]\n"
         "Solves as solve does, then writes the degrees of freedom at the answer (numeric,\n"
         "from the Jacobian's rank, and structural), the variables still free, and the\n"
         "over-determined, redundant and conflicting equations by model line.\n",
         Dof},
        {"edit", "", Files::AtMostOne, "a session over a model's equations, from a terminal or a script",
         "usage: kobwb edit [FILE]\n"
         "A session over the equations of FILE (none when left out): commands are read\n"
         "one a line from standard input, answers written to standard output, errors as\n"
         "\"error: ...\" lines. Type help in the session for its commands. Exit status 1\n"
         "when a command failed, so that a script can tell.\n",
         Edit},
    };
    return rows;
}

} // namespace kobwb_tool
