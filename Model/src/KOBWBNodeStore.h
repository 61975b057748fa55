#ifndef KOBWBNodeStore_h
#define KOBWBNodeStore_h

#include <vector>

class KOBWBNode;

// Every node a model owns, whether an equation holds it or not (the nodes of an
// equation abandoned on a syntax error stay here until the model goes).
class KOBWBNodeStore {
public:
    KOBWBNodeStore() = default;
    KOBWBNodeStore(const KOBWBNodeStore&) = delete;
    KOBWBNodeStore& operator=(const KOBWBNodeStore&) = delete;
    ~KOBWBNodeStore();

    void Take(KOBWBNode* node);
    // Frees a node taken before.
    void Free(KOBWBNode* node);

private:
    std::vector<KOBWBNode*> m_nodes;
    int m_nbOfFreed = 0;
};

#endif
