// SPDX-License-Identifier: MIT
#include "sysinfo/program/Json.hpp"

#include "sysinfo/program/Report.hpp"

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

Json processorOf(const Report& report) {
    Json levels = Json::array();
    for (const CoreLevel& level : report.levels) {
        levels.push_back(levelOf(level));
    }
    return {{"name", value(report.processor)},
            {"family", value(report.family)},
            {"model", value(report.number)},
            {"stepping", value(report.stepping)},
            {"cores", value(report.cores)},
            {"coresInAll", value(report.coresInAll)},
            {"threads", value(report.threads)},
            {"threadsInAll", value(report.threadsInAll)},
            {"threadSlots", value(report.threadSlots)},
            {"is64Bit", report.is64Bit},
            {"levels", std::move(levels)}};
}

Json systemOf(const Report& report) {
    return {{"type", value(report.systemType)},
            {"release", value(report.release)},
            {"version", value(report.version)},
            {"productVersion", value(report.productVersion)},
            {"build", value(report.build)},
            {"releaseType", value(report.releaseType)},
            {"bootArguments", value(report.bootArguments)}};
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

std::string jsonOf(const Report& report) {
    return written({{"machine",
                     {{"hostname", value(report.hostname)},
                      {"model", value(report.model)},
                      {"architecture", value(report.architecture)}}},
                    {"processor", processorOf(report)},
                    {"memory", {{"installed", value(report.memory)}, {"pageSize", value(report.pageSize)}}},
                    {"gpu", jsonOf(report.gpu)},
                    {"system", systemOf(report)}});
}

} // namespace vantor::sysinfo
