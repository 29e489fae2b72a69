// SPDX-License-Identifier: MIT
#include "sysinfo/program/Json.hpp"

namespace vantor::sysinfo {

namespace {

Json value(const auto& found) {
    return found ? Json(*found) : Json(nullptr);
}

Json levelOf(const CoreLevel& level) {
    return {{"cores", value(level.cores)},
            {"coresInAll", value(level.coresInAll)},
            {"threads", value(level.threads)},
            {"threadsInAll", value(level.threadsInAll)},
            {"l1InstructionCache", value(level.l1Instruction)},
            {"l1DataCache", value(level.l1Data)},
            {"l2Cache", value(level.l2)},
            {"threadsPerL2Cache", value(level.threadsPerL2)}};
}

Json processorOf(const Page& page) {
    Json levels = Json::array();
    for (const CoreLevel& level : page.levels) {
        levels.push_back(levelOf(level));
    }
    return {{"name", value(page.processor)},
            {"family", value(page.family)},
            {"model", value(page.number)},
            {"stepping", value(page.stepping)},
            {"packages", value(page.packages)},
            {"cores", value(page.cores)},
            {"coresInAll", value(page.coresInAll)},
            {"threads", value(page.threads)},
            {"threadsInAll", value(page.threadsInAll)},
            {"threadSlots", value(page.threadSlots)},
            {"frequency", value(page.frequency)},
            {"is64Bit", page.is64Bit},
            {"l3Cache", value(page.l3)},
            {"threadsPerL3Cache", value(page.threadsPerL3)},
            {"levels", std::move(levels)}};
}

Json systemOf(const Page& page) {
    return {{"name", value(page.system)},
            {"type", value(page.systemType)},
            {"release", value(page.release)},
            {"version", value(page.version)},
            {"productVersion", value(page.productVersion)},
            {"build", value(page.build)},
            {"releaseType", value(page.releaseType)}};
}

} // namespace

Json jsonOf(const std::optional<CpuDetect::GPUDetection::GPU>& gpu) {
    if (!gpu) {
        return nullptr;
    }
    return {{"name", gpu->name}, {"vram", gpu->vram}, {"hasUnifiedMemory", gpu->hasUnifiedMemory}};
}

std::string written(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string pageJson(const Page& page) {
    return written(
        {{"machine",
          {{"hostname", value(page.hostname)},
           {"model", value(page.model)},
           {"architecture", value(page.architecture)},
           {"hypervisor", value(page.hypervisor)},
           {"uptime", value(page.uptime)}}},
         {"processor", processorOf(page)},
         {"memory",
          {{"usable", value(page.memory)}, {"swap", value(page.swap)}, {"pageSize", value(page.pageSize)}}},
         {"gpu", jsonOf(page.gpu)},
         {"system", systemOf(page)}});
}

} // namespace vantor::sysinfo
