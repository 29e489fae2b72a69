// SPDX-License-Identifier: MIT
#include "platform/remote/exposition/ExpositionReader.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace vantor::tests {
namespace {

using namespace platform::remote;

/// A sample in short: "name{label=value;…}value@seconds".
std::string shortened(const Sample& sample) {
    std::string text(sample.name);
    for (const SampleLabel& label : sample.labels) {
        text.append(text.ends_with(';') ? "" : "{").append(label.name).append("=").append(label.value) += ';';
    }
    text += sample.labels.empty() ? "=" : "}";
    char number[64];
    std::snprintf(number, sizeof number, "%g", sample.value);
    text += number;
    if (sample.seconds) {
        std::snprintf(number, sizeof number, "@%.1f", *sample.seconds);
        text += number;
    }
    return text;
}

std::string readAll(std::string_view text, ExpositionFormat format = ExpositionFormat::text) {
    ExpositionReader reader(text, format);
    std::string result;
    while (const Sample* const sample = reader.next()) {
        result += shortened(*sample) + ' ';
    }
    return result + std::to_string(reader.spoiledLines());
}

TEST(Exposition, ReadsWhatTheFormatAllows) {
    EXPECT_EQ(readAll("# HELP a b\n\n\t a\t 1 \n"), "a=1 0");
    EXPECT_EQ(readAll("a { b = \"1\" , c=\"2\" , } -2.5e+10 1500\n"), "a{b=1;c=2;}-2.5e+10@1.5 0");
    EXPECT_EQ(readAll("a{b=\"}, # {\\\"\\\\n\\n\"} 0x1p-2\n"), "a{b=}, # {\"\\n\n;}0.25 0");
    EXPECT_EQ(readAll("{\"my name\",b=\"1\"} +Inf\na NaN\na -infinity\na{} 2\n"),
              "my name{b=1;}inf a=nan a=-inf a=2 0");
}

TEST(Exposition, ALineThatBreaksTheFormatSpoilsItselfOnly) {
    for (const char* const line : {"a",
                                   "a one",
                                   "a 1_0",
                                   "a +-1",
                                   "a 0x-1",
                                   "a nan(1)",
                                   "a 1e999",
                                   "1a 1",
                                   "a{b} 1",
                                   "a{b=1} 1",
                                   "a{b=\"1} 1",
                                   "a{b=\"\\\"} 1",
                                   "a{b=\"1\"c=\"2\"} 1",
                                   "a{,} 1",
                                   "{b=\"1\"} 1",
                                   "a 1 x",
                                   "a 1 2 3",
                                   "a 1 # {} 1",
                                   "{\"a\",\"b\"} 1",
                                   "<html>"}) {
        EXPECT_EQ(readAll("x 1\n" + std::string(line) + "\ny 2\n"), "x=1 y=2 1") << line;
    }
    EXPECT_EQ(readAll("a 1\nb 12"), "a=1 1") << "the number may have gone on";
}

TEST(Exposition, OpenMetricsHasSecondsExemplarsAndAnEnd) {
    EXPECT_EQ(readAll("a_total{b=\"c\"} 1 1.5 # {id=\"x\"} 2 3\na 2 # {} 1\n# EOF\nb 1\n",
                      ExpositionFormat::openMetrics),
              "a_total{b=c;}1@1.5 a=2 0");
}

TEST(Exposition, LabelsAreBounded) {
    const auto with = [](std::size_t labels, std::size_t longest) {
        std::string line = "a{";
        for (std::size_t i = 0; i < labels; ++i) {
            line += "l=\"" + std::string(i == 0 ? longest : 1, 'v') + "\",";
        }
        return readAll(line + "} 1\n").back();
    };
    EXPECT_EQ(with(128, 4096), '0');
    EXPECT_EQ(with(129, 1), '1');
    EXPECT_EQ(with(1, 4097), '1');
}

} // namespace
} // namespace vantor::tests
