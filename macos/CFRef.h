// Sole ownership of one Core Foundation object received under the Create or Copy rule.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <utility>

namespace quorvane {

// ARC manages Objective-C objects only; a Core Foundation result that the
// caller owns is released here, on every path out of the scope that holds it.
template <typename T> class CFRef {
public:
    CFRef() = default;
    explicit CFRef(T ref)
        : m_ref(ref) {}
    ~CFRef() { reset(); }

    CFRef(const CFRef&) = delete;
    CFRef& operator=(const CFRef&) = delete;
    CFRef(CFRef&& other) noexcept
        : m_ref(std::exchange(other.m_ref, nullptr)) {}
    CFRef& operator=(CFRef&& other) noexcept {
        if (this != &other) {
            reset();
            m_ref = std::exchange(other.m_ref, nullptr);
        }
        return *this;
    }

    T get() const { return m_ref; }
    explicit operator bool() const { return m_ref != nullptr; }

    // For the out-parameter of a Copy function; whatever was held is released first.
    T* put() {
        reset();
        return &m_ref;
    }

    void reset() {
        if (m_ref != nullptr) {
            CFRelease(m_ref);
            m_ref = nullptr;
        }
    }

private:
    T m_ref = nullptr;
};

} // namespace quorvane
