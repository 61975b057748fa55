#include "KOBLVROperator.h"

#include "KOBLVRStream.h"

KOBLVROperator::OperatorInfo::OperatorInfo(const KOBLVRString& name, const KOBLVRString& version,
                                           const char* text)
    : m_name(name), m_version(version), m_text(text) {}

KOBLVROperator::KOBLVROperator() = default;

KOBLVROperator::~KOBLVROperator() = default;

void KOBLVROperator::SetLVRLevel(unsigned level) { m_level = level; }

bool KOBLVROperator::CheckInput(KOBLVRStream&) const { return true; }

bool KOBLVROperator::CheckOutput(KOBLVRStream&) const { return true; }

void KOBLVROperator::WriteInput(KOBLVRStream&) const {}

void KOBLVROperator::WriteOutput(KOBLVRStream&) const {}

void KOBLVROperator::SetInterruptFunction(bool (*function)(int, int)) { m_interrupt = function; }

bool KOBLVROperator::IsInterrupted(int step, int total) const {
    return m_interrupt && m_interrupt(step, total);
}

int KOBLVROperator::Run() {
    if (m_replay) {
        WriteInput(*m_replay);
        m_replay->WriteSections(KOBLVRStorage::Input);
    }
    const int result = Execute();
    if (m_replay) {
        WriteOutput(*m_replay);
        m_replay->WriteSections(KOBLVRStorage::Output);
        m_replay->Flush();
    }
    return result;
}
