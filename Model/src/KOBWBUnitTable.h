#ifndef KOBWBUnitTable_h
#define KOBWBUnitTable_h

// What a unit text of the model language stands for.
enum class KOBWBUnitKind { Unknown, Distance, Angle, Ambiguous };

// The kind of a unit text: km, m, cm, mm, nm, in, ft, micron, yard, mile and
// in_ft are lengths; rad, deg, grad, turn, mrad and %_angle are angles; the
// degree sign (byte 0xB0), "'" and '"' may be either.
KOBWBUnitKind KOBWBClassifyUnit(const char* unit);

// The unit class text of a kind; an unknown unit is "None".
const char* KOBWBUnitClassOf(KOBWBUnitKind kind);

#endif
