#ifndef KobwbxPythonAttached_h
#define KobwbxPythonAttached_h

#include "Handles.h"

#include <stdexcept>
#include <utility>

namespace kobwbx_python {

// An object over a factory, destroyed with the Python object or when the factory
// closes, whichever comes first.
template <class T, class Destroy> class Attached : public Attachment {
public:
    Attached(Owner owner, T* object) : m_owner(std::move(owner)), m_object(object) { m_owner->Attach(this); }
    ~Attached() override { Release(); }
    Attached(const Attached&) = delete;
    Attached& operator=(const Attached&) = delete;

    void Release() override {
        if (!m_object) return;
        Destroy()(m_object);
        m_object = nullptr;
        m_owner->Detach(this);
    }
    const Owner& GetOwner() const { return m_owner; }
    T& Get() const {
        m_owner->Factory();
        if (!m_object) throw std::runtime_error("released with its factory");
        return *m_object;
    }

private:
    Owner m_owner;
    T* m_object;
};

} // namespace kobwbx_python

#endif
