// SPDX-License-Identifier: MIT
#include "platform/remote/sources/ServerAnswer.hpp"

#include <utility>

namespace vantor::platform::remote {

namespace {

constexpr int fine = 200;
constexpr int badRequest = 400;
constexpr int cannotBeDone = 422;

bool isJSON(const FetchAnswer& answer) {
    return answer.contentType.empty() || answer.contentType.starts_with("application/json");
}

std::string problemOfStatus(int status) {
    const std::string number = "status " + std::to_string(status);
    switch (status) {
    case 401:
    case 403:
        return "it wants a name and a password, or a token (" + number + ")";
    case 404:
    case 405:
        return "there is no Prometheus at this address (" + number + ")";
    case 429:
        return "it is asked too much (" + number + ")";
    default:
        return "it answers with " + number;
    }
}

} // namespace

ServerTold readServerAnswer(const FetchAnswer& answer, const std::function<void(const AnswerSeries&)>& take) {
    ServerTold told;
    if (!answer.problem.empty()) {
        told.problem = answer.problem;
        return told;
    }
    if (!isJSON(answer)) {
        told.problem =
            answer.status == fine
                ? "it answers with a page in place of figures: a login, or not Prometheus's address"
                : problemOfStatus(answer.status);
        return told;
    }
    QueryAnswer read = readQueryAnswer(answer.body, take);
    told.hasWarnings = read.hasWarnings;
    if (answer.status == fine && read.isWhole) {
        told.outcome = ServerTold::Outcome::answered;
        return told;
    }
    // What the server says of an error is JSON as well, if it is the server's own.
    const bool isOwnWord = !read.problem.empty() && !answer.body.empty() && answer.body.front() == '{';
    told.problem =
        isOwnWord || answer.status == fine ? std::move(read.problem) : problemOfStatus(answer.status);
    if (answer.status == badRequest || answer.status == cannotBeDone) {
        told.outcome = ServerTold::Outcome::refused;
    }
    return told;
}

} // namespace vantor::platform::remote
