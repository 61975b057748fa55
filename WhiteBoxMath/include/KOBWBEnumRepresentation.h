#ifndef KOBWBEnumRepresentation_h
#define KOBWBEnumRepresentation_h

// How an enumerated domain holds its elements: an explicit ascending list, an
// interval of two elements (lower, upper), or one of the element-free states.
enum KOBWBEnumRepresentation {
    KOBWBEnumList = 0,
    KOBWBEnumInterval = 1,
    KOBWBEnumAny = 2,
    KOBWBEnumNil = 3
};

#endif
