// SPDX-License-Identifier: MIT
#include "hosts/app/Sampler.hpp"

#include "hosts/app/UseRows.hpp"
#include "hosts/app/Worker.hpp"
#include "metrics/MemoryStatus.hpp"
#include "pages/StoragePage.hpp"

#include <algorithm>
#include <cmath>
#include <mutex>
#include <utility>

namespace vantor::hosts::app {

namespace {

constexpr std::size_t minuteLength = 31; // samples, two seconds apart, and the one that the first starts at

std::optional<double> fraction(std::int64_t part, std::int64_t whole) {
    return whole > 0 ? std::optional(static_cast<double>(part) / static_cast<double>(whole)) : std::nullopt;
}

std::optional<double> memoryFraction() {
    const std::optional<platform::vm_statistics64> record = getVMStatistics64();
    if (!record) {
        return std::nullopt;
    }
    const MemoryFigures figures = MemoryStatus::getMemoryStatus(*record);
    return fraction(std::clamp<std::int64_t>(figures.at("used"), 0, figures.at("total")),
                    figures.at("total"));
}

std::optional<double> storageFraction() {
    const std::optional<VolumeFigures> figures = volumeFigures();
    return figures ? fraction(figures->used, figures->total) : std::nullopt;
}

} // namespace

/// What is kept from one sample to the next. One worker at a time has it.
struct Sampler::Memory {
    explicit Memory(ProcessorPageSampler::Clock given) : clock(std::move(given)), processes(clock) {}

    Sample sample(const Question& question);
    void sampleProcessor(Sample& sample, bool asPage);
    void lookBehind(Sample& sample, const std::set<std::string>& keys);

    std::mutex mutex; // guards the rest
    ProcessorPageSampler::Clock clock;
    std::optional<ProcessorPageSampler> processor;
    ProcessSampler processes;
    std::vector<CpuUsage> minute;
    bool isFirst = true; // the processor's first figure is of all the time since the machine started
};

void Sampler::Memory::sampleProcessor(Sample& sample, bool asPage) {
    CpuUsage usage;
    if (asPage && processor) {
        sample.processorPage = processor->page();
        usage = sample.processorPage->usage;
    } else {
        usage = CpuStatus::getCpuUsage();
        if (asPage) {
            processor.emplace(clock);
            sample.processorStart = processor->start();
        } else {
            processor.reset();
        }
    }
    if (!std::exchange(isFirst, false) && !std::isnan(usage.idle)) {
        minute.push_back(usage);
        if (minute.size() > minuteLength) {
            minute.erase(minute.begin());
        }
    }
    if (!minute.empty()) {
        sample.processor = (100 - minute.back().idle) / 100;
    }
    sample.minute = minute;
}

void Sampler::Memory::lookBehind(Sample& sample, const std::set<std::string>& keys) {
    if (keys.empty()) {
        return;
    }
    std::vector<platform::ApplicationUse> asked;
    std::vector<std::string> askedKeys;
    std::vector<double> shares;
    const auto ask = [&](const platform::ApplicationUse& use) {
        if (std::string key = applicationKey(use); keys.contains(key)) {
            asked.push_back(use);
            askedKeys.push_back(std::move(key));
            return true;
        }
        return false;
    };
    if (sample.memoryPage) {
        std::ranges::for_each(sample.memoryPage->applications, ask);
    } else if (sample.processorPage) {
        for (const ProcessorShare& share : sample.processorPage->applications) {
            if (ask(share.use)) {
                shares.push_back(share.shown);
            }
        }
    }
    const std::size_t processors = sample.processorPage ? sample.processorPage->processors.size() : 1;
    std::vector<ApplicationProcesses> behind = processes.look(asked, processors);
    for (std::size_t i = 0; i < behind.size(); ++i) {
        if (sample.processorPage) {
            fitWithin(shares[i], behind[i]);
        }
        sample.unfolded.emplace(std::move(askedKeys[i]), std::move(behind[i]));
    }
}

Sample Sampler::Memory::sample(const Question& question) {
    const std::lock_guard lock(mutex);
    const PageKind page = question.page;
    Sample sample;
    if (page == PageKind::memory) {
        sample.memoryPage = vantor::memoryPage();
        sample.memory = sample.memoryPage ? std::optional(sample.memoryPage->fraction()) : std::nullopt;
    } else {
        sample.memory = memoryFraction();
    }
    sample.storage = storageFraction();
    sampleProcessor(sample, page == PageKind::processor);
    lookBehind(sample, question.unfolded);
    return sample;
}

Sampler::Sampler(Heard heard, ProcessorPageSampler::Clock clock)
    : m_heard(std::move(heard)),
      m_memory(std::make_shared<Memory>(std::move(clock))),
      m_alive(std::make_shared<bool>(true)) {}

Sampler::~Sampler() = default;

void Sampler::take(const Question& question) {
    if (m_isBusy) {
        m_next = question;
    } else {
        start(question);
    }
}

void Sampler::start(const Question& question) {
    m_isBusy = true;
    onWorker(
        m_alive, [question, memory = m_memory] { return memory->sample(question); },
        [this](const Sample& sample) {
            m_isBusy = false;
            if (const std::optional<Question> next = std::exchange(m_next, std::nullopt)) {
                start(*next);
            }
            m_heard(sample);
        });
}

void Sampler::forget() {
    m_memory = std::make_shared<Memory>(m_memory->clock);
}

} // namespace vantor::hosts::app
