// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <typeindex>

namespace vantor::platform {

/// An object to which others attach what they want to know the next time, such as the counters of the sample
/// before: one value of each type, which goes when the object goes. So nothing that was read of one machine
/// is ever compared with what was read of another.
class AssociatedState {
public:
    /// The value of this type, made when it is first asked for. Any thread; the value guards itself.
    template<class T>
    [[nodiscard]] T& associated() {
        const std::scoped_lock lock(m_mutex);
        std::shared_ptr<void>& value = m_values[typeid(T)];
        if (value == nullptr) {
            value = std::make_shared<T>();
        }
        return *static_cast<T*>(value.get());
    }

protected:
    AssociatedState() = default;
    ~AssociatedState() = default;

private:
    std::mutex m_mutex;
    std::map<std::type_index, std::shared_ptr<void>> m_values;
};

} // namespace vantor::platform
