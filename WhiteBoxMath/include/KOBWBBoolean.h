#ifndef KOBWBBoolean_h
#define KOBWBBoolean_h

// Four-valued boolean: certainly false, certainly true, either (undetermined),
// neither (contradiction, the empty boolean).
enum KOBWBBoolean : int { KOBWBFalse = 0, KOBWBTrue = 1, KOBWBUndef = 2, KOBWBContr = 3 };

#endif
