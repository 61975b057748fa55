#ifndef KOBWBUnitClass_h
#define KOBWBUnitClass_h

// The unit classes of model nodes (GetUnitType), compared by text. The library
// knows two kinds of quantity, lengths and angles.
inline constexpr const char KOBWBUnitClassDistance[] = "Distance";
inline constexpr const char KOBWBUnitClassAngle[] = "Angle";
// Dimensionless, and the class of every node until something decides it.
inline constexpr const char KOBWBUnitClassNone[] = "None";
// A length or an angle, undecided (feet or minutes of arc, ...).
inline constexpr const char KOBWBUnitClassAmbiguous[] = "Ambiguous";
inline constexpr const char KOBWBUnitClassUnsolved[] = "Unsolved";
inline constexpr const char KOBWBUnitClassInhomogeneous[] = "Inhomogeneous";

#endif
