#ifndef KobwbCommands_h
#define KobwbCommands_h

#include "KobwbCommandLine.h"

namespace kobwb_tool {

// The handlers of the command table; each returns the exit status.
int Check(const Invocation& invocation);
int Eval(const Invocation& invocation);
int Print(const Invocation& invocation);
int Diff(const Invocation& invocation);
int Simplify(const Invocation& invocation);
int Classify(const Invocation& invocation);
int Contract(const Invocation& invocation);
int Edit(const Invocation& invocation);
// KobwbSolve.cpp
int Solve(const Invocation& invocation);
int Dof(const Invocation& invocation);

} // namespace kobwb_tool

#endif
