#include "KOBWBConstant.h"
#include "KOBWBIntegration.h"
#include "KOBWBOperator.h"

// The integration slot of the nodes: every node answers through the algebra, which
// reads the node with its whole graph below.

KOBWBExpression* KOBWBConstant::IntegrateTable(KOBWBVariable* v, unsigned char& integrable) {
    return KOBWBIntegration::Integrate(this, v, integrable);
}

KOBWBExpression* KOBWBOperator::IntegrateTable(KOBWBVariable* v, unsigned char& integrable) {
    return KOBWBIntegration::Integrate(this, v, integrable);
}
