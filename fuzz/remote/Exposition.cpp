// SPDX-License-Identifier: MIT
#include "Fuzz.hpp"
#include "platform/remote/readings/Figures.hpp"
#include "platform/remote/readings/ReadingFrom.hpp"

#include <cmath>

using namespace vantor::platform::remote;
using vantor::fuzz::require;

/// The two halves of the input are taken for two answers of one machine.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = vantor::fuzz::asText(data, size);
    for (const ExpositionFormat format : {ExpositionFormat::text, ExpositionFormat::openMetrics}) {
        ExpositionReader reader(text, format);
        std::size_t samples = 0;
        while (const Sample* const sample = reader.next()) {
            require(!sample->name.empty() && sample->labels.size() <= ExpositionReader::mostLabels);
            ++samples;
        }
        require(samples + reader.spoiledLines() <= size + 1);
        const Reading before = readingFrom(text.substr(0, size / 2), format, std::chrono::seconds(1));
        const Reading after = readingFrom(text.substr(size / 2), format, std::chrono::seconds(2));
        const NodeFigures figures = figuresBetween(before, after);
        require(!figures.memory || figures.memory->free <= figures.memory->total);
        require(!figures.network || (std::isfinite(figures.network->received) && figures.network->sent >= 0));
    }
    return 0;
}
