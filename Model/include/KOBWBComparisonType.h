#ifndef KOBWBComparisonType_h
#define KOBWBComparisonType_h

// The relation tested by a comparison node of a condition (a LessEqual operator
// node of the model tree). The numbers are those of the equation types, so an
// inequality of the text maps to its comparison unchanged; the operands keep the
// order in which they were written.
enum KOBWBComparisonType {
    KOBWBNoComparison = 0,
    KOBWBCompareEqual = 1,
    KOBWBCompareNotEqual = 2,
    KOBWBCompareLessEqual = 3,
    KOBWBCompareLess = 4,
    KOBWBCompareGreaterEqual = 5,
    KOBWBCompareGreater = 6
};

#endif
