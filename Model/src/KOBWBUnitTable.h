#ifndef KOBWBUnitTable_h
#define KOBWBUnitTable_h

// What a unit text of the model language stands for.
enum class KOBWBUnitKind { Unknown, Distance, Angle, Ambiguous };

// The kind of a unit text: km, m, cm, mm, nm, in, ft, micron, yard, mile and
// in_ft are lengths; rad, deg, grad, turn, mrad and %_angle are angles; the
// degree sign (byte 0xB0), "'" and '"' may be either.
KOBWBUnitKind KOBWBClassifyUnit(const char* unit);

class KOBLVRString;

// The same for a unit text of a node: at once for a shared copy (see below).
KOBWBUnitKind KOBWBClassifyUnit(const KOBLVRString& unit);

// The unit class text of a kind; an unknown unit is "None".
const char* KOBWBUnitClassOf(KOBWBUnitKind kind);

// A copy, shared by the whole program, of a known unit text or unit class
// text; null for any other text.
const KOBLVRString* KOBWBSharedUnitText(const char* text);
// True for one of those shared copies.
bool KOBWBIsSharedUnitText(const KOBLVRString* text);

#endif
