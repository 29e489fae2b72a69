// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace vantor::costs {

/// The system calls that one refresh needs on this machine where each question reads the preferences anew,
/// and nothing else: no parsing, no text, no memory.
class BareCalls {
public:
    BareCalls(std::string documents, std::string storeFile);
    ~BareCalls();
    BareCalls(const BareCalls&) = delete;
    BareCalls& operator=(const BareCalls&) = delete;

    void refresh() const;

private:
    void askVolume() const;
    void readStore() const;

    std::string m_documents;
    std::string m_storeFile;
    int m_mounts, m_memory, m_processor, m_network;
    std::vector<int> m_compressed; ///< zram disks
};

} // namespace vantor::costs
