// SPDX-License-Identifier: MIT
#include "platform/remote/answers/QueryAnswer.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace vantor::tests {
namespace {

using namespace platform::remote;

/// The series in short, "{label=value,…}value@second …", then what became of the answer.
std::string told(const std::string& json) {
    std::string all;
    const QueryAnswer answer = readQueryAnswer(json, [&all](const AnswerSeries& series) {
        for (const AnswerSeries::Label& label : series.labels) {
            all += label.name + "=" + label.value + ",";
        }
        for (const AnswerSeries::Point& point : series.points) {
            char text[64];
            std::snprintf(text, sizeof text, " %g@%.0f", point.value, point.seconds);
            all += text;
        }
        all += "; ";
    });
    return all + (answer.isWhole ? "whole" : answer.problem) + (answer.hasWarnings ? ", warned" : "");
}

std::string captured(const std::string& name) {
    std::ifstream file(VANTOR_CORPUS "/answers/" + name);
    return told(std::string(std::istreambuf_iterator<char>(file), {}));
}

TEST(Answers, OfRealServersAreRead) {
    EXPECT_TRUE(
        captured("query-cpu-rate").starts_with("instance=127.0.0.1:19100,mode=idle, 1.05582@1795408641; "));
    EXPECT_EQ(captured("query-escapes"),
              "x=a<b>&c\"q\"\\back\nnl\ttab \u00E9 \u2603 \U0001F600, 1.5e-09@1795410815; whole");
    EXPECT_EQ(captured("query-scalar"), " 1@1795408641; whole");
    EXPECT_EQ(captured("query-nan"), " nan@1795408641; whole");
    EXPECT_EQ(captured("query-string"), "whole");
    EXPECT_EQ(captured("query-empty"), "whole");
    EXPECT_TRUE(captured("detail-matrix").find(" 1.79531e+09@1795410503 1.79531e+09@1795410533") !=
                std::string::npos);
    EXPECT_TRUE(captured("error-parse").starts_with("bad_data: invalid parameter \"query\""));
    EXPECT_TRUE(captured("vm-error-parse").starts_with("422: error when executing"));
}

TEST(Answers, KeysMayComeInAnyOrderWithOthersBetween) {
    EXPECT_EQ(
        told(
            R"({"new":{"data":{"result":[{"metric":{"a":"x"},"value":[1,"2"]}]}},"data":{"result":[{"value":[1,"2"],
        "histogram":[1,{"buckets":[[0,"1","2","3"]]}],"metric":{"a":"b"}},{"metric":{"a":"c"}}],"resultType":"vector"},
        "warnings":["a store is down"],"status":"success"})"),
        "a=b, 2@1; whole, warned");
}

TEST(Answers, WhatIsNoneOrHasNoBoundsIsRefused) {
    const auto one = [](const std::string& metric, const std::string& values) {
        return R"({"status":"success","data":{"result":[{"metric":{)" + metric + R"(},"values":[)" + values +
               "]}]}}";
    };
    const auto repeated = [](const std::string& what, std::size_t times) {
        std::string text;
        for (std::size_t i = 0; i < times; ++i) {
            text += (i == 0 ? "" : ",") + what;
        }
        return text;
    };
    EXPECT_EQ(told("<html>"), "the answer is no JSON, or ends early");
    EXPECT_EQ(told("[]"), "the answer is none of Prometheus's");
    EXPECT_EQ(told("{}"), "the answer is none of Prometheus's");
    EXPECT_EQ(told(R"({"status":"error","errorType":"x","error":"\u001b[2J"})"), "x: \uFFFD[2J");
    EXPECT_EQ(told(one(R"("a":"b")", R"([1,"2"])").substr(0, 60)), "the answer is no JSON, or ends early");
    EXPECT_EQ(told(std::string(1000000, '[')), "the answer is nested too deep");
    EXPECT_NE(told(one(repeated(R"("a":"b")", 128), R"([1,"2"])")).find("whole"), std::string::npos);
    EXPECT_NE(told(one(repeated(R"("a":"b")", 129), R"([1,"2"])")).find("too many or too long labels"),
              std::string::npos);
    EXPECT_NE(told(one(R"("a":")" + std::string(4097, 'x') + '"', R"([1,"2"])")).find("too long"),
              std::string::npos);
    EXPECT_NE(told(one("", repeated(R"([1,"2"])", 11001))).find("too many samples"), std::string::npos);
    EXPECT_EQ(told(one("", R"([1,"one"],[2,"3"])")), " 3@2; whole") << "no number, no sample";
}

} // namespace
} // namespace vantor::tests
