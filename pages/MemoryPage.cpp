// SPDX-License-Identifier: MIT
#include "pages/MemoryPage.hpp"

#include "metrics/MemoryStatus.hpp"

#include <algorithm>
#include <tuple>

namespace vantor {

namespace {

using platform::ApplicationUse;

/// The sampler's figures overlap a little (locked pages are programs' too, and all are read one after the
/// other), so each part takes what the parts before it have left.
std::vector<MemoryPart> partsOf(const MemoryFigures& figures, std::int64_t used, std::int64_t available) {
    const std::int64_t kernel = std::clamp<std::int64_t>(figures.at("wire"), 0, used);
    const std::int64_t compressed = std::clamp<std::int64_t>(figures.at("compressor"), 0, used - kernel);
    const std::int64_t inactive = std::max<std::int64_t>(available - figures.at("free"), 0);
    const std::int64_t cache = std::clamp<std::int64_t>(figures.at("purgeable"), 0, available - inactive);
    return {{MemoryPartKind::applications, used - kernel - compressed},
            {MemoryPartKind::kernel, kernel},
            {MemoryPartKind::compressed, compressed},
            {MemoryPartKind::inactive, inactive},
            {MemoryPartKind::cache, cache},
            {MemoryPartKind::free, available - inactive - cache}};
}

void takeApplications(MemoryPage& page, std::vector<ApplicationUse> applications) {
    std::ranges::sort(applications, [](const ApplicationUse& a, const ApplicationUse& b) {
        return std::tuple(a.isService, b.memory + b.swap, a.name) <
               std::tuple(b.isService, a.memory + a.swap, b.name);
    });
    std::int64_t listed = 0;
    for (const ApplicationUse& application : applications) {
        listed += static_cast<std::int64_t>(application.memory);
    }
    page.others = std::max<std::int64_t>(page.parts.front().bytes - listed, 0);
    page.applications = std::move(applications);
}

} // namespace

std::optional<MemoryPage> memoryPage(platform::ListedFor purpose) {
    const std::optional<platform::vm_statistics64> record = getVMStatistics64();
    if (!record) {
        return std::nullopt;
    }
    const MemoryFigures figures = MemoryStatus::getMemoryStatus(*record);
    MemoryPage page;
    page.total = figures.at("total");
    if (page.total <= 0) {
        return std::nullopt;
    }
    page.used = std::clamp<std::int64_t>(figures.at("used"), 0, page.total);
    page.available = page.total - page.used;
    page.parts = partsOf(figures, page.used, page.available);
    platform::Workload& workload = platform::currentWorkload();
    page.swap = workload.swapSpace();
    page.pressure = workload.memoryPressure();
    takeApplications(page, workload.applications(purpose));
    return page;
}

} // namespace vantor
