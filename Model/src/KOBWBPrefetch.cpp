#include "KOBWBPrefetch.h"

#include "KOBWBEqNode.h"

#include <cstdint>

void KOBWBPrefetchNextEquation(const KOBWBEqNode* equation) {
    const KOBWBEqNode* next = equation ? equation->GetNext() : nullptr;
    if (!next) return;
    const std::uintptr_t from = reinterpret_cast<std::uintptr_t>(equation + 1);
    const std::uintptr_t to = reinterpret_cast<std::uintptr_t>(next + 1);
    // Equations of the text lie in order and are short; anything else (an
    // equation added later, a very long one) is left to the caches.
    const std::uintptr_t lineSize = 64;
    const std::uintptr_t farthest = 64 * lineSize;
    if (to <= from || to - from > farthest) return;
    for (std::uintptr_t line = from; line < to; line += lineSize)
        __builtin_prefetch(reinterpret_cast<const void*>(line));
}
