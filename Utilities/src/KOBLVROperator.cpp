#include "KOBLVROperator.h"

#include "KOBLVRStream.h"

KOBLVROperator::OperatorInfo::OperatorInfo(const KOBLVRString& name, const KOBLVRString& version,
                                           const char* text)
    : m_name(name), m_version(version), m_text(text) {}

KOBLVROperator::KOBLVROperator() = default;

KOBLVROperator::~KOBLVROperator() = default;

void KOBLVROperator::InitWithEnv() {}

void KOBLVROperator::SetInterruptFunction(bool (*function)(int, int)) { m_interrupt = function; }

int KOBLVROperator::GetVersionOfStream() const { return 0; }

bool KOBLVROperator::CheckInput(KOBLVRStream&) const { return true; }

bool KOBLVROperator::CheckOutput(KOBLVRStream&) const { return true; }

void KOBLVROperator::WriteInput(KOBLVRStream&) const {}

void KOBLVROperator::WriteOutput(KOBLVRStream&) const {}

KOBLVRString KOBLVROperator::GetOperatorName() { return GetOperatorInfo().GetName(); }

KOBLVRString KOBLVROperator::GetOperatorShortName() { return GetOperatorInfo().GetVersion(); }

void KOBLVROperator::SetLVRLevel(unsigned level) { m_level = level; }

void KOBLVROperator::Remove() { delete this; }

KOBLVROperator::OperatorInfo& KOBLVROperator::GetOperatorInfo() {
    static OperatorInfo none("", "", "");
    return none;
}

bool KOBLVROperator::CheckInput(std::ostream&) const { return true; }

bool KOBLVROperator::CheckOutput(std::ostream&) const { return true; }

bool KOBLVROperator::IsInterrupted(int step, int total) const {
    return m_interrupt && m_interrupt(step, total);
}

int KOBLVROperator::Run() {
    if (m_replay) WriteInput(*m_replay);
    const int result = DoRun();
    if (m_replay) {
        WriteOutput(*m_replay);
        m_replay->Flush();
    }
    return result;
}
