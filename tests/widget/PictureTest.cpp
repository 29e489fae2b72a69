// SPDX-License-Identifier: MIT
#include "DemoInPlace.hpp"
#include "TestTree.hpp"
#include "hosts/widget/Snapshot.hpp"

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QXmlStreamReader>

namespace vantor::hosts::widget {

namespace {

QByteArray bytesOf(const std::filesystem::path& path) {
    QFile file(QString::fromStdString(path.string()));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class Picture : public ::testing::Test {
protected:
    int draw(const std::string& name, Options options = {}) {
        options.snapshot = (m_tree.root() / name).string();
        options.demo = true;
        tests::putDemoInPlace();
        return writeSnapshot(options);
    }
    QImage image(const std::string& name) {
        return QImage(QString::fromStdString((m_tree.root() / name).string()));
    }
    tests::TestTree m_tree;
};

TEST_F(Picture, HasTheSizeOfItsMode) {
    Options compact;
    compact.expanded = false;
    compact.scale = 1.5;
    ASSERT_EQ(draw("compact.png", compact), 0);
    EXPECT_EQ(image("compact.png").height(), 165);
    ASSERT_EQ(draw("expanded.png"), 0);
    EXPECT_EQ(image("expanded.png").height(), 360);
    EXPECT_EQ(image("expanded.png").pixelColor(0, 0).alpha(), 0); // the corners are round
}

TEST_F(Picture, AsSvgIsHarmless) {
    ASSERT_EQ(draw("a.svg"), 0);
    QXmlStreamReader reader(bytesOf(m_tree.root() / "a.svg"));
    int texts = 0;
    while (!reader.atEnd()) {
        reader.readNext();
        EXPECT_FALSE(reader.isDTD() || reader.isEntityReference() || reader.isProcessingInstruction());
        if (!reader.isStartElement()) {
            continue;
        }
        texts += reader.name() == QLatin1String("text") ? 1 : 0;
        for (const char* active : {"script", "foreignObject", "a", "use", "animate", "set", "style"}) {
            EXPECT_NE(reader.name(), QLatin1String(active));
        }
        for (const QXmlStreamAttribute& attribute : reader.attributes()) {
            EXPECT_FALSE(attribute.name().startsWith(QLatin1String("on")))
                << attribute.name().toString().toStdString();
            EXPECT_NE(attribute.name(), QLatin1String("href"));
        }
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    EXPECT_GT(texts, 20);
}

TEST_F(Picture, IsWrittenAsAWholeOrNotAtAll) {
    m_tree.write("taken.png/inside", ""); // a folder cannot be replaced
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(draw("taken.png"), 1);
    EXPECT_EQ(draw("no/such/folder/a.png"), 1);
    EXPECT_NE(::testing::internal::GetCapturedStderr().find("vantor-widget: --snapshot: "),
              std::string::npos);
    m_tree.write("old.png", "old");
    ASSERT_EQ(draw("old.png"), 0);
    EXPECT_FALSE(image("old.png").isNull());
    std::size_t files = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(m_tree.root())) {
        ++files;
    }
    EXPECT_EQ(files, 2U); // nothing is left beside them
}

} // namespace

} // namespace vantor::hosts::widget
