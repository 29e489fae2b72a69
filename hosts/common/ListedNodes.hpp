// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/TargetFiles.hpp"
#include "platform/remote/sources/NodesSource.hpp"

#include <memory>
#include <string>
#include <vector>

namespace vantor::hosts::common {

/// Exporters that are asked directly, of whom some or all stand in files that may change. Main thread.
class ListedNodes final : public platform::FleetSource {
public:
    /// Reads the files. The access goes with each question; the fetcher must outlive this.
    ListedNodes(std::string name, std::vector<platform::remote::NodeTarget> fixed, TargetFiles files,
                std::shared_ptr<const platform::remote::Access> access, platform::remote::Fetcher& fetcher,
                std::chrono::milliseconds interval);
    ~ListedNodes() override { stopLooking(); }

    void start() override;
    void pause() override;
    [[nodiscard]] std::shared_ptr<const platform::FleetSnapshot> snapshot() const override {
        return m_nodes.snapshot();
    }
    [[nodiscard]] bool isSettled() const override { return m_nodes.isSettled(); }
    void setHandler(std::function<void()> handler) override { m_nodes.setHandler(std::move(handler)); }

    [[nodiscard]] const platform::remote::NodesSource& nodes() const { return m_nodes; }

private:
    void look();
    void takeUp();
    void stopLooking();

    platform::remote::NodesSource m_nodes;
    std::vector<platform::remote::NodeTarget> m_fixed;
    TargetFiles m_files;
    std::shared_ptr<const platform::remote::Access> m_access;
    std::shared_ptr<platform::NSTimer> m_looking;
};

} // namespace vantor::hosts::common
