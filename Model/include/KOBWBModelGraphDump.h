#ifndef KOBWBModelGraphDump_h
#define KOBWBModelGraphDump_h

#include "KOBWBxExport.h"

#include <iosfwd>
#include <string>

class KOBWBModel;

// Writes a parsed model tree as a ".WBGraph" text file: line oriented, one
// record a line, fields separated by one space, texts in double quotes (a quote
// or backslash in them preceded by a backslash, other characters below 0x20
// written \xHH). A location is LINE:COLUMN of where the node's text starts, both
// counted from 1.
//
//   WBGraph 1
//   equation ID RELATION LOCATION left NODE right NODE
//   node ID KIND TEXT [unit UNIT] LOCATION [children ID ...]
//
// The first line names the format and its version. Each equation of the model,
// in the model's order, is one equation record (ID its model id, RELATION its
// relation quoted, "" for an equation without one, NODE the id of its left and
// right term, - for a missing right term) followed by one node record per node
// of its terms, the left term's nodes first. Nodes are numbered from 0 across
// the whole file in the order of a walk that takes a parent before its children
// and the children in order; nothing is shared, the model being a tree. KIND is
// constant, variable or operator; TEXT is the constant as written ("3", "2.5",
// "1/4 Pi"), the variable's name, or the operator's sign or function name ("+",
// "<=", "sin", "-" for a negation, "!" for a negated condition, "if" for a
// conditional, a black box's name); UNIT the unit text written after the node;
// children lists an operator's children in order.
//
//   WBGraph 1
//   equation 1 "=" 1:1 left 0 right 3
//   node 0 operator "+" 1:1 children 1 2
//   node 1 variable "x" 1:1
//   node 2 constant "2" unit "mm" 1:5
//   node 3 constant "10" unit "mm" 1:12
//
// Files go where two environment variables say: ADL_ODT_OUT names the folder,
// ODT_LOG_NAME the log name (DefaultLogName when unset or empty). The first dump
// of a process to a given folder and log name writes <folder>/<log>.WBGraph, the
// following ones <log>_2.WBGraph, <log>_3.WBGraph and so on (a dump that fails
// uses its number too), so that no dump of the process overwrites another; a
// later process starts again from the first name. KOBWBModel::FillFactory writes a dump of its model this way on each
// call when ADL_ODT_OUT is set.
class KOBWBX_API KOBWBModelGraphDump {
public:
    enum Result {
        // The file was written.
        Written = 0,
        // No folder was named: nothing was written.
        NotRequested = 1,
        // The file could not be opened or written.
        Failed = 2
    };

    static constexpr const char* DefaultLogName = "KOBWBModel";

    // Appends the dump to out.
    static void Write(const KOBWBModel& model, std::string& out);
    // Writes the dump to the stream; false when the stream fails.
    static bool Write(const KOBWBModel& model, std::ostream& out);
    // Writes the next file of the folder that ADL_ODT_OUT names; gives the
    // file's path in path (when not null) once it is written.
    static Result WriteFile(const KOBWBModel& model, std::string* path = nullptr);
    // The same into the folder given (null or empty: NotRequested).
    static Result WriteFileInto(const KOBWBModel& model, const char* folder, std::string* path = nullptr);
};

#endif
