// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace vantor::tests {

inline std::string fileContent(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// A folder of files under the system's temporary folder, gone when the test ends.
class TestTree {
public:
    explicit TestTree(const std::filesystem::path& under = std::filesystem::temp_directory_path()) {
        std::string pattern = (under / "vantor-test-XXXXXX").string();
        m_root = ::mkdtemp(pattern.data());
    }
    ~TestTree() {
        std::error_code ignored;
        std::filesystem::remove_all(m_root, ignored);
    }
    TestTree(const TestTree&) = delete;
    TestTree& operator=(const TestTree&) = delete;

    [[nodiscard]] const std::filesystem::path& root() const { return m_root; }

    /// Writes a file below the root, with the folders that lead to it.
    std::filesystem::path write(const std::filesystem::path& path, std::string_view content) const {
        const std::filesystem::path whole = m_root / path;
        std::filesystem::create_directories(whole.parent_path());
        std::ofstream(whole, std::ios::binary) << content;
        return whole;
    }

    /// Where files that are rewritten thousands of times do not wear a disk, where there is such a place.
    static std::filesystem::path inMemory() {
        return std::filesystem::is_directory("/dev/shm") ? "/dev/shm"
                                                         : std::filesystem::temp_directory_path();
    }

private:
    std::filesystem::path m_root;
};

} // namespace vantor::tests
