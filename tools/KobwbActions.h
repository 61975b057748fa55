#ifndef KobwbActions_h
#define KobwbActions_h

#include "KOBWBx.h"
#include "KobwbModelSource.h"

#include <string>

namespace kobwb_tool {

// What the commands and the editor do with a factory. Each writes its answer to
// out, as lines of text or, with json, as one JSON value.

// A finite number written whole (strtod's forms); empty when read, otherwise what
// was wrong.
std::string ParseNumber(const std::string& text, double& value);

// Gives every variable that has no value yet the whole real line.
void OpenUnsetVariables(KOBWBFactory& factory);

// Sets a variable's domain from "NAME=[LOW,HIGH]" or "NAME=VALUE"; "NAME=*" gives
// it the whole real line again. Empty when done, otherwise what was wrong.
std::string SetDomain(KOBWBFactory& factory, const std::string& assignment);

// Every variable with its domain, in the model's units where the model tells
// them ("x in [0, 1] mm", "n in [0.0, 1.0]").
// JSON: [{"name": N, "domain": TEXT, "lower": L, "upper": U[, "shown": TEXT in units]}, ...]
void WriteVariables(KOBWBFactory& factory, const ModelSource& source, bool json, std::string& out);

// Every equation, its root's interval over the current domains and whether the
// equation can still hold ("possible", "impossible" or "unknown").
// JSON: [{"id": I, "equation": TEXT, "root": TEXT, "lower": L, "upper": U, "canHold": H}, ...]
void WriteEvaluation(KOBWBFactory& factory, bool json, std::string& out);

// The derivative of every equation's root by the variable, simplified on the
// algebra engine (raw: the graph as differentiation makes it); false (nothing
// written) when the factory has no variable of that name.
// JSON: [{"id": I, "derivative": TEXT}, ...]
bool WriteDerivatives(KOBWBFactory& factory, const std::string& name, bool raw, bool json, std::string& out);

// Whether each equation's root is linear, quadratic or neither.
// JSON: [{"id": I, "class": "linear"|"quadratic"|"nonlinear", "equation": TEXT}, ...]
void WriteClassification(KOBWBFactory& factory, bool json, std::string& out);

// Narrows the variables' domains with the equations, then tells the outcome and
// the domains. Returns false when the system has no solution in the domains: then
// the domains are left as they were and the equations that empty them are named
// instead of a box.
// JSON: {"status": S, "revisions": N, "variables": [as WriteVariables]}, or with
// no solution {"status": "no solution", "revisions": N,
//              "equations": [{"id": I, "line": L (0 when unknown), "equation": TEXT}]}
bool RunContract(KOBWBFactory& factory, const ModelSource& source, bool json, std::string& out);

// The equations in a format: "text" (the model language), "mathml" (presentation
// MathML), "json" or "dot" (the graph); false when the format is none of these.
bool WriteSystem(const KOBWBFactory& factory, const std::string& format, std::string& out);
bool IsSystemFormat(const std::string& format);
// The formats WriteSystem knows, for messages: "text|mathml|json|dot".
std::string SystemFormats();

} // namespace kobwb_tool

#endif
