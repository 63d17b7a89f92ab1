#include "bounce/BodyMemory.h"

#include "bounce/BounceCheck.h"

namespace bouncecheck {

BodyMemory* BounceCheck::memory() const {
    if (!m_memory) return nullptr;
    const unsigned long revision = m_sbBounceData.revision();
    if (m_memory->dataRevision != revision) m_memory.emplace().dataRevision = revision;
    return &*m_memory;
}

}  // namespace bouncecheck
