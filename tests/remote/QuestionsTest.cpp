// SPDX-License-Identifier: MIT
#include "platform/remote/NodeQuestion.hpp"
#include "platform/remote/sources/FleetQuestions.hpp"
#include "platform/remote/sources/MachineMoments.hpp"
#include "platform/remote/sources/QuestionText.hpp"
#include "platform/remote/sources/ServerRequest.hpp"

#include <gtest/gtest.h>

namespace vantor::tests {
namespace {

using namespace platform::remote;

std::string selected(std::string_view text) {
    std::string problem;
    return selectorFrom(text, problem).value_or("refused");
}

TEST(Questions, ASelectorIsAListOfMatchersAndNothingBehindIt) {
    EXPECT_EQ(selected(""), "");
    EXPECT_EQ(selected(" { } "), "");
    EXPECT_EQ(selected(R"({job="node", dc!~'a|b',})"), R"(job="node",dc!~'a|b')");
    EXPECT_EQ(selected(R"(a="\"}",b=~`\`)"), R"(a="\"}",b=~`\`)");
    for (const char* const wrong :
         {"job", "job=node", R"(job="node"})", R"(job="node" dc="a")", R"(job="a\")", R"(1b="a")", R"(="a")",
          R"(job=="a")", R"(up{job="a"})", R"(job="a"} or up{job="b")", "a=\"x\ny\""}) {
        EXPECT_EQ(selected(wrong), "refused") << wrong;
    }
}

TEST(Questions, EachHasTheSelectorAndTheIdentityOrIsTheUsersOwn) {
    PrometheusOptions options;
    options.select = R"(env="prod")";
    options.identity = {"cluster", "instance"};
    for (const FleetQuestion question : everyRefresh) {
        const std::string text = questionText(question, options);
        std::size_t selectors = 0;
        for (std::size_t at = text.find('{'); at != std::string::npos; at = text.find('{', at + 1)) {
            ++selectors;
        }
        std::size_t selects = 0;
        for (std::size_t at = text.find(options.select + '}'); at != std::string::npos;
             at = text.find(options.select + '}', at + 1)) {
            ++selects;
        }
        EXPECT_GT(selectors, 0u);
        EXPECT_EQ(selectors, selects) << text;
        EXPECT_NE(text.find(question == FleetQuestion::up ? "up{env" : "by (cluster, instance)"),
                  std::string::npos)
            << text;
    }
    options.queries.processor = "instance:node_cpu_utilisation:rate5m";
    EXPECT_EQ(questionText(FleetQuestion::processor, options), options.queries.processor);

    EXPECT_EQ(machineMatchers(options, {"a\"\\", "db07\n:9100"}),
              R"(cluster="a\"\\",instance="db07\n:9100",env="prod")");
    EXPECT_EQ(problemWith(options), "");
    options.identity = {"instance)"};
    EXPECT_NE(problemWith(options), "");
}

TEST(Questions, AnAnswerIsBounded) {
    EXPECT_EQ(serverRequest({}, "up", std::nullopt, 5).mostBytes, std::size_t{32} << 20);
    EXPECT_EQ(nodeQuestion({}, nullptr, true).mostBytes, std::size_t{8} << 20) << "of one machine";
}

TEST(Questions, AFormHasNoSignThatEndsAField) {
    std::string form;
    appendFormField(form, "query", "up{a=\"&é+ 1\"}");
    appendFormField(form, "time", secondsText(1795408640.4744));
    EXPECT_EQ(form, "query=up%7Ba%3D%22%26%C3%A9%2B%201%22%7D&time=1795408640.474");
}

AnswerSeries series(std::string name, std::vector<AnswerSeries::Point> points, std::string cpu = "") {
    return {{{"__name__", std::move(name)}, {"cpu", std::move(cpu)}, {"mode", "idle"}}, std::move(points)};
}

TEST(Questions, TheLastTwoMomentsOfAMachineBecomeReadings) {
    const std::vector<AnswerSeries> all{
        series("node_memory_MemTotal_bytes", {{100, 8}, {115, 8}, {130.5, 8}}),
        series("node_memory_MemAvailable_bytes", {{100, 1}, {115, 2}, {130.5, 3}}),
        series("node_cpu_seconds_total", {{100, 1}, {115, 16}, {130.5, 31.5}}, "0"),
        series("node_cpu_seconds_total", {{100, 1}, {115, 16}}, "1"), // a processor that went
        series("up", {{100, 1}, {115, 0}, {130.5, 1}}),
    };
    MachineMoments moments = machineMoments(all);
    ASSERT_TRUE(moments.before && moments.after);
    EXPECT_EQ(moments.after->memory->free, 3u);
    EXPECT_EQ(moments.before->processor.size(), 2u);
    EXPECT_EQ(moments.after->processor.size(), 1u);
    EXPECT_EQ(moments.after->taken - moments.before->taken, std::chrono::milliseconds(15500));
    EXPECT_EQ(moments.afterSeconds, 130.5);
    EXPECT_FALSE(moments.downSince);

    moments = machineMoments({all[0], series("up", {{115, 1}, {145, 0}, {160, 0}})});
    EXPECT_EQ(moments.downSince, 145);
    AnswerSeries other = series("up", {{145, 0}}); // of another job at the same address
    other.labels.push_back({"job", "cadvisor"});
    EXPECT_FALSE(machineMoments({all[0], other, all[4]}).downSince);
    EXPECT_FALSE(machineMoments({all[1]}).after->memory) << "no total, no memory";
    EXPECT_TRUE(machineMoments({}).isEmpty());
}

} // namespace
} // namespace vantor::tests
