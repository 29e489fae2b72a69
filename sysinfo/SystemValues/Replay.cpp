// SPDX-License-Identifier: MIT
#include "sysinfo/SystemValues/Replay.hpp"

#include <atomic>

namespace vantor::SystemValues {

namespace {

using Queries = std::vector<CPUID::Registers>;

std::atomic<std::uint64_t> machineInPlace{0};
std::atomic<std::uint64_t> lastMachine{0};
constinit PackagesBase::Guarded<Recording::Device> deviceInPlace;

/// Sets a shared value and gives the one before.
template<class T>
T exchanged(PackagesBase::Guarded<T>& shared, T value) {
    return shared.with([&](T& stored) { return std::exchange(stored, std::move(value)); });
}

} // namespace

Replay::Replay(const Recording& recording)
    : m_machineBefore(machineInPlace.exchange(++lastMachine)),
      m_deviceBefore(exchanged(deviceInPlace, recording.device.value_or(std::nullopt))),
      m_recordsBefore(exchanged(SysctlQueryStorage::records, recording.records)),
      m_queriesBefore(exchanged(CPUID::Registers::queryCache, recording.queries)),
      m_enabledBefore(SysctlQueryStorage::enabled.exchange(true)),
      m_recoverBefore(SysctlQueryStorage::recoverEveryQueryFromStorage.exchange(true)) {}

Replay::~Replay() {
    SysctlQueryStorage::recoverEveryQueryFromStorage = m_recoverBefore;
    SysctlQueryStorage::enabled = m_enabledBefore;
    CPUID::Registers::queryCache = std::move(m_queriesBefore);
    SysctlQueryStorage::records = std::move(m_recordsBefore);
    deviceInPlace = std::move(m_deviceBefore);
    machineInPlace = m_machineBefore;
}

std::uint64_t Replay::machine() {
    return machineInPlace;
}

Recording::Device Replay::device() {
    return deviceInPlace;
}

} // namespace vantor::SystemValues
