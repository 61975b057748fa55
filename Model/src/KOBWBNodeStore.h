#ifndef KOBWBNodeStore_h
#define KOBWBNodeStore_h

#include <cstddef>
#include <vector>

class KOBWBNode;

// Every node a model owns, whether an equation holds it or not (the nodes of an
// equation abandoned on a syntax error stay here until the model goes). Nodes
// are built in blocks of memory that the store hands out in order, so that a
// model of many equations costs few allocations, its nodes lie in the order of
// the text for the walks over them, and the whole goes at once.
class KOBWBNodeStore {
public:
    KOBWBNodeStore() = default;
    KOBWBNodeStore(const KOBWBNodeStore&) = delete;
    KOBWBNodeStore& operator=(const KOBWBNodeStore&) = delete;
    ~KOBWBNodeStore();

    // Room for a node of that size, aligned for any node; null when memory runs
    // out.
    void* Allocate(size_t size);
    // Takes a node built in room from Allocate (or on the heap).
    void Take(KOBWBNode* node);
    // Destroys a node taken before; its room goes with the store.
    void Free(KOBWBNode* node);

private:
    std::vector<KOBWBNode*> m_nodes;
    int m_nbOfFreed = 0;
    std::vector<void*> m_blocks;
    char* m_next = nullptr;
    size_t m_left = 0;
    size_t m_blockSize = 4096;
};

#endif
