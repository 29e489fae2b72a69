// SPDX-License-Identifier: MIT
#include "hosts/common/StandardStreams.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <string>

namespace vantor::hosts::common {
namespace {

std::string readAll(int descriptor) {
    std::string all;
    std::array<char, 65536> buffer{};
    for (ssize_t count = 0; (count = ::read(descriptor, buffer.data(), buffer.size())) > 0;) {
        all.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return all;
}

TEST(UnhurriedStream, DropsWhatTheReaderDoesNotTake) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_NONBLOCK), 0);
    while (::write(ends[1], "x", 1) == 1) {
    }
    ::fcntl(ends[1], F_SETFL, 0); // from here on writing waits
    std::FILE* const stream = unhurriedStream(ends[1]);
    const auto log = [stream](const std::string& line) {
        std::fputs((line + '\n').c_str(), stream);
        std::fflush(stream);
    };
    log("nobody reads this");
    EXPECT_EQ(readAll(ends[0]).find('n'), std::string::npos);
    const std::string wide(9000, 'w');
    log("now");
    log(wide);
    EXPECT_EQ(readAll(ends[0]), "now\n" + wide + "\n");
    std::fclose(stream);
    ::close(ends[0]);
    ::close(ends[1]);
}

} // namespace
} // namespace vantor::hosts::common
