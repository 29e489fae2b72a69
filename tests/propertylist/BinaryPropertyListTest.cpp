// SPDX-License-Identifier: MIT
#include "BinaryList.hpp"
#include "FailingAllocation.hpp"
#include "ThreadTime.hpp"
#include "platform/propertylist/PropertyList.hpp"

#include <gtest/gtest.h>

using namespace vantor::platform;
using namespace std::string_literals;
using vantor::tests::AllocationWatch;
using vantor::tests::bigEndianBytes;
using vantor::tests::BinaryList;
using vantor::tests::threadMilliseconds;

namespace {

std::optional<PropertyListObject> read(const std::string& bytes) {
    const PropertyListResult result = readPropertyList(bytes);
    const auto* const top = std::get_if<PropertyListObject>(&result);
    return top != nullptr ? std::optional(*top) : std::nullopt;
}

std::string reason(const std::string& bytes) {
    const PropertyListResult result = readPropertyList(bytes);
    const auto* const failure = std::get_if<PropertyListFailure>(&result);
    return failure != nullptr ? failure->reason : "";
}

/// The single object of a list.
std::optional<PropertyListObject> readOne(const std::string& object) {
    return read(BinaryList{object}.bytes());
}

TEST(BinaryPropertyList, ReadsEveryKindOfScalar) {
    EXPECT_EQ(readOne("\x08")->boolean(), false);
    EXPECT_EQ(readOne("\x09")->boolean(), true);
    EXPECT_EQ(readOne("\0"s)->kind(), PropertyListKind::null);
    EXPECT_EQ(readOne("\x10\xFF")->integer(), 255); // short integers have no sign
    EXPECT_EQ(readOne("\x11\xFF\xFE")->integer(), 65'534);
    EXPECT_EQ(readOne("\x12\xFF\xFF\xFF\xFF")->integer(), 4'294'967'295);
    EXPECT_EQ(readOne("\x13" + bigEndianBytes(~0ULL, 8))->integer(), -1);
    const std::optional<PropertyListObject> wide =
        readOne("\x14" + bigEndianBytes(0, 8) + bigEndianBytes(~0ULL, 8));
    EXPECT_EQ(wide->integer(), std::nullopt);
    EXPECT_EQ(wide->number(), 18'446'744'073'709'551'615.0);
    EXPECT_EQ(readOne("\x14" + std::string(16, '\xFF'))->integer(), -1);
    EXPECT_EQ(readOne("\x22\x3F\x80\0\0"s)->number(), 1.0);
    EXPECT_EQ(readOne("\x23" + bigEndianBytes(0x3FC999999999999A, 8))->number(), 0.2);
    EXPECT_EQ(readOne("\x33" + bigEndianBytes(0x3FF0000000000000, 8))->date(), 1.0);
    EXPECT_EQ(readOne("\x43"s + "a\0b"s)->data(), "a\0b"s);
    EXPECT_EQ(readOne(BinaryList::text("a text of more than fourteen"))->string(),
              "a text of more than fourteen");
    EXPECT_EQ(readOne("\x80\x07")->uid(), 7U);
    EXPECT_EQ(readOne("\x87" + bigEndianBytes(~0ULL, 8))->uid(), ~0ULL);
    for (const std::string& bad :
         {"\x01"s, "\x15"s + std::string(32, 'x'), "\x14\x01"s + std::string(15, 'x'),
          "\x24"s + std::string(16, 'x'), "\x88"s + std::string(9, 'x'),
          "\x52"
          "a\x80"s,
          "\x71"
          "a"s,
          "\xC0"s, "\x0F"s}) {
        EXPECT_FALSE(readOne(bad).has_value()) << ::testing::PrintToString(bad);
    }
}

TEST(BinaryPropertyList, TurnsUTF16IntoUTF8) {
    EXPECT_EQ(readOne("\x64\0a\0\xE9\x20\xAC\xFF\xFD"s)->string(), "aé€\uFFFD");
    EXPECT_EQ(readOne("\x62\xD8\x3D\xDE\x00"s)->string(), "😀");
    EXPECT_EQ(readOne("\x62\xDE\x00\xD8\x3D"s)->string(), "\uFFFD\uFFFD");
    EXPECT_EQ(readOne("\x62\xD8\x3D\0a"s)->string(), "\uFFFDa");
}

TEST(BinaryPropertyList, FindsMembersAndTheLastOfEqualKeys) {
    for (const unsigned width : {1U, 2U, 3U, 8U}) {
        BinaryList list;
        list.referenceWidth = width;
        std::string dictionary = BinaryList::head(0xD, 3);
        for (const std::uint64_t reference : {1U, 2U, 1U, 3U, 4U, 5U}) {
            dictionary += bigEndianBytes(reference, width);
        }
        list.objects = {dictionary, BinaryList::text("k"), BinaryList::text("list"),
                        "\x10\x01", list.array({3, 0, 3}), "\x10\x02"};
        const std::optional<PropertyListObject> top = read(list.bytes());
        ASSERT_TRUE(top.has_value()) << width;
        EXPECT_EQ(top->size(), 3U);
        EXPECT_EQ(top->objectForKey("k")->integer(), 2);
        EXPECT_FALSE(top->objectForKey("K").has_value());
        EXPECT_EQ(top->pairAt(1)->first.string(), "list");
        EXPECT_FALSE(top->pairAt(3).has_value());
        const PropertyListObject members = *top->objectForKey("list");
        EXPECT_EQ(members.at(2)->integer(), 1);
        EXPECT_FALSE(members.at(3).has_value());
        EXPECT_EQ(members.at(1)->objectForKey("k")->integer(), 2); // round in a circle
    }
    EXPECT_FALSE(read(BinaryList{"\xD1\x01\x01", "\x10\x01"}.bytes()).has_value()); // a number for a key
}

TEST(BinaryPropertyList, CutAnywhereOrLyingFailsCleanly) {
    const std::string whole = BinaryList{"\xD2\x01\x02\x03\x04", BinaryList::text("a"), BinaryList::text("b"),
                                         "\x10\x01", BinaryList::text("a long enough text")}
                                  .bytes();
    ASSERT_TRUE(read(whole).has_value());
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(read(whole.substr(0, length)).has_value()) << length;
    }
    for (std::size_t at = whole.size() - 26; at < whole.size(); ++at) { // the trailer's numbers
        for (const char byte : {'\xFF', '\x7F', '\x80'}) {
            std::string changed = whole;
            changed[at] = byte;
            EXPECT_FALSE(read(changed).has_value()) << at;
        }
    }
    for (const char* const marker : {"\x4F", "\x5F", "\x6F", "\xAF", "\xDF"}) {
        for (const std::uint64_t count : {std::uint64_t{40}, std::uint64_t{1} << 63U, ~std::uint64_t{0}}) {
            const std::string object = marker + "\x13"s + bigEndianBytes(count, 8) + "some bytes";
            EXPECT_EQ(reason(BinaryList{object}.bytes()), "an object is cut short");
        }
    }
    EXPECT_FALSE(readOne("\xA1\x01").has_value());
}

TEST(BinaryPropertyList, SharingAndCirclesCostNothing) {
    BinaryList bomb;
    for (std::uint64_t i = 0; i < 34; ++i) {
        bomb.objects.push_back(bomb.array({i + 1, i + 1}));
    }
    bomb.objects.push_back(BinaryList::text("boom"));
    const std::string bytes = bomb.bytes();
    const AllocationWatch watch;
    EXPECT_TRUE(read(bytes).has_value());
    EXPECT_LT(watch.mostBytes(), 8'000U);

    const std::optional<PropertyListObject> circle = readOne("\xA2" + std::string(2, '\0'));
    EXPECT_EQ(circle->at(1)->at(0)->at(1)->size(), 2U);
}

/// Lists that make the most of every byte: each must be refused, quickly and within the memory that is
/// promised.
TEST(BinaryPropertyList, HostileListsStayWithinBounds) {
    BinaryList deep;
    deep.referenceWidth = 3;
    for (std::uint64_t i = 0; i < 60'000; ++i) {
        deep.objects.push_back(deep.array({i + 1}));
    }
    deep.objects.emplace_back("\x09");
    BinaryList many;
    many.objects.assign(propertyListMostObjects + 1, "\x09");
    BinaryList wide;
    wide.referenceWidth = 2;
    wide.objects = {wide.array(std::vector<std::uint64_t>(propertyListMostReferences + 1, 0))};

    // 60,000 objects at two places: an array that names each of them, and a text (or that array again).
    const auto piled = [](const std::string& object) {
        std::vector<std::uint64_t> members;
        for (std::uint64_t i = 0; i < 60'000; ++i) {
            members.push_back(i);
        }
        BinaryList list;
        list.referenceWidth = 2;
        std::string bytes = "bplist00" + list.array(members);
        const std::size_t second = bytes.size();
        bytes += object;
        const std::size_t table = bytes.size();
        bytes += bigEndianBytes(8, 4);
        for (std::size_t i = 1; i < members.size(); ++i) {
            bytes += bigEndianBytes(object.empty() ? 8 : second, 4);
        }
        bytes += std::string(6, '\0') + "\x04\x02" + bigEndianBytes(members.size(), 8) + bigEndianBytes(0, 8);
        return bytes + bigEndianBytes(table, 8);
    };
    const std::pair<std::string, std::string> hostile[] = {
        {deep.bytes(), "it is nested too deeply"},
        {many.bytes(), "it claims too many objects"},
        {wide.bytes(), "its containers have too many members"},
        {piled(""), "its containers have too many members"},
        {piled(BinaryList::text(std::string(600'000, 'x'))), "its texts are too long together"},
        {piled(BinaryList::head(6, 300'000) + std::string(600'000, 'x')), "its texts are too long together"},
        {std::string(propertyListMostBytes + 1, 'x'), "it is larger than 1 MiB"},
    };
    for (const auto& [bytes, expected] : hostile) {
        const AllocationWatch watch;
        EXPECT_LT(threadMilliseconds([&] { EXPECT_EQ(reason(bytes), expected); }), 50 * VANTOR_SLOWDOWN);
        EXPECT_LT(watch.mostBytes(), 12'000'000U);
    }
}

TEST(BinaryPropertyList, WithoutMemoryThereIsNoList) {
    const std::string bytes =
        BinaryList{"\xD1\x01\x02", BinaryList::text("k"), "\x68" + std::string(16, '\x20')}.bytes();
    const std::size_t failed = vantor::tests::failEachAllocation(
        [&] { return std::string(bytes); },
        [](std::string input) { return readPropertyList(std::move(input)); },
        [](const PropertyListResult& result, bool hasFailed) {
            EXPECT_EQ(std::holds_alternative<PropertyListFailure>(result), hasFailed);
        });
    EXPECT_GE(failed, 4U);
}

} // namespace
