// SPDX-License-Identifier: MIT
#pragma once

#include "platform/core/FatalStop.hpp"

#include <array>
#include <atomic>
#include <cstddef>
#include <type_traits>
#include <utility>

namespace vantor::platform {

/// All that is current on one thread: at most one object of each type that `Current` is used with. A copy
/// points to the same objects and keeps none of them alive.
class Context {
private:
    template<class>
    friend class Current;
    friend class WorkItem;

    static constexpr std::size_t most = 8; // types

    static Context& ofThisThread() noexcept {
        static thread_local constinit Context context;
        return context;
    }
    static std::size_t nextPlace() {
        static std::atomic<std::size_t> places{0};
        const std::size_t place = places++;
        if (place >= most) {
            fatalStop("too many types of objects are put in place");
        }
        return place;
    }
    template<class T>
    static void*& placeOf() {
        static const std::size_t place = nextPlace();
        return ofThisThread().m_objects[place];
    }

    std::array<void*, most> m_objects{};
};

/// Puts an object in place as the current one of its type while it lives: `const Current<Machine>
/// scope(machine);`. It counts on the thread that made it and in the work that this thread submits meanwhile
/// (see WorkItem), nowhere else; another thread starts with nothing in place. Scopes of a type nest and must
/// end on their thread, the last one first; anything else is fatal. The object must outlive that work.
template<class T>
class Current {
public:
    explicit Current(std::type_identity_t<T>& object)
        : m_object(&object), m_before(std::exchange(Context::placeOf<T>(), m_object)) {}
    ~Current() {
        if (std::exchange(Context::placeOf<T>(), m_before) != m_object) {
            fatalStop("an object that was put in place did not go in turn, or on another thread");
        }
    }
    Current(const Current&) = delete;
    Current& operator=(const Current&) = delete;

    /// What is in place on this thread; null where nothing is.
    [[nodiscard]] static T* get() { return static_cast<T*>(Context::placeOf<T>()); }

private:
    T* m_object;
    void* m_before;
};

} // namespace vantor::platform
