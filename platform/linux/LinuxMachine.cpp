// SPDX-License-Identifier: MIT
#include "platform/linux/LinuxMachine.hpp"

#include "platform/linux/records/PageCounts.hpp"
#include "platform/linux/user/UserDirs.hpp"

#include <system_error>
#include <utility>

namespace vantor::platform::linux {

LinuxMachine::LinuxMachine(Options options)
    : m_options(std::move(options)),
      m_memory(m_options, m_failures),
      m_processor(m_options, m_failures),
      m_interfaces(m_options, m_failures),
      m_paths(std::make_shared<LocalPaths>(m_options.tree)),
      m_volume(m_options, m_failures, *m_paths),
      m_documents(documentsFolder(m_options.folders, *m_paths)),
      m_documentFolders(
          std::make_shared<const std::vector<std::string>>(m_documents.empty() ? 0 : 1, m_documents)) {}

LinuxMachine::~LinuxMachine() = default;

void LinuxMachine::startReleasableScan(ScanPace pace) {
    if (m_documents.empty() || m_options.folders.cache.empty()) {
        return;
    }
    m_releasable = std::make_unique<ReleasableScan>(m_options.folders, m_documents, pace, m_paths);
    m_volume.count(*m_releasable);
}

kern_return_t LinuxMachine::hostPageSize(std::uint64_t& size) {
    size = pageSizeFor(m_memory.total(), m_options.pageSize);
    return KERN_SUCCESS;
}

kern_return_t LinuxMachine::hostVirtualMemory(vm_statistics64& record) {
    const std::optional<MemorySplit> figures = m_memory.read();
    if (!figures) {
        return KERN_FAILURE;
    }
    record = pageCounts(*figures, pageSizeFor(figures->total, m_options.pageSize));
    return KERN_SUCCESS;
}

kern_return_t LinuxMachine::hostCpuLoad(host_cpu_load_info& record) {
    record = m_processor.read();
    return KERN_SUCCESS;
}

std::uint64_t LinuxMachine::physicalMemory() {
    return m_memory.total();
}

bool LinuxMachine::isiOSAppOnMac() {
    return false;
}

std::optional<std::vector<InterfaceAddress>> LinuxMachine::interfaceAddresses() {
    return m_interfaces.read();
}

std::optional<NetworkTotals> LinuxMachine::networkTotals() {
    return m_interfaces.totals();
}

std::shared_ptr<const std::vector<std::string>> LinuxMachine::documentDirectories() {
    return m_documentFolders;
}

std::optional<VolumeCapacities> LinuxMachine::volumeCapacities(const std::string& path) {
    return m_volume.read(path);
}

std::vector<SourceFailure> LinuxMachine::failures() {
    return m_failures.list();
}

} // namespace vantor::platform::linux
