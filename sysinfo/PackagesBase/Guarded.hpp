// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>
#include <utility>

namespace vantor::PackagesBase {

/// A value that several threads share, made when it is first used. Reading gives a copy; assigning replaces
/// the whole; `with` runs a function on it under the lock. It can be a static that is ready before any
/// constructor has run.
/// Only for statics: the value is never destroyed, since a thread may still ask while the process ends.
template<class T>
class Guarded {
public:
    constexpr Guarded() = default;
    Guarded(const Guarded&) = delete;

    Guarded& operator=(T value) {
        const std::scoped_lock lock(m_mutex);
        made() = std::move(value);
        return *this;
    }
    [[nodiscard]] T value() const {
        return with([](const T& value) { return value; });
    }
    operator T() const { return value(); }

    template<class F>
    auto with(F&& function) {
        const std::scoped_lock lock(m_mutex);
        return std::forward<F>(function)(made());
    }
    template<class F>
    auto with(F&& function) const {
        const std::scoped_lock lock(m_mutex);
        return std::forward<F>(function)(std::as_const(made()));
    }

private:
    T& made() const {
        if (m_value == nullptr) {
            m_value = new T();
        }
        return *m_value;
    }

    mutable std::mutex m_mutex;
    mutable T* m_value = nullptr;
};

} // namespace vantor::PackagesBase
