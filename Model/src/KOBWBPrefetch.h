#ifndef KOBWBPrefetch_h
#define KOBWBPrefetch_h

class KOBWBEqNode;

// Asks the processor to start loading the nodes of the equation after this one,
// so that a walk over the equations in order finds them in cache. A model
// builds its nodes one after the other in its store, an equation's terms before
// the equation node, so the next equation's nodes lie between this equation
// node and the next one. Only a hint: nothing is read.
void KOBWBPrefetchNextEquation(const KOBWBEqNode* equation);

#endif
