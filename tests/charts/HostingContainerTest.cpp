// SPDX-License-Identifier: MIT
#include "charts/HostingContainer.hpp"

#include "Output.hpp"
#include "SimulatedStore.hpp"
#include "charts/ArcChartView.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace vantor;
using namespace vantor::tests;
using platform::UIView;
using platform::UIViewController;

namespace {

class HostingContainerTest : public ::testing::Test {
protected:
    using Container = HostingContainer<ArcChartView>;
    std::shared_ptr<Container> make() {
        ArcChartView content;
        content.arcChartViewModel = std::make_shared<ArcChartViewModel>();
        return Container::initWithContent(content, *parent);
    }
    std::shared_ptr<UIViewController> parent = std::make_shared<UIViewController>();

private:
    platform::SimulatedViewer m_viewer;
    platform::Current<platform::Viewer> m_scope{m_viewer};
};

TEST_F(HostingContainerTest, PinsTheHostedViewAndAttachesItsController) {
    const auto container = make();
    ASSERT_EQ(container->subviews().size(), 1U);
    UIView& hosted = *container->subviews().front();
    EXPECT_TRUE(hosted.backgroundColor() == platform::UIColor::clearColor());
    EXPECT_FALSE(hosted.translatesAutoresizingMaskIntoConstraints());
    ASSERT_EQ(hosted.constraints().size(), 4U);
    for (const platform::NSLayoutConstraint& constraint : hosted.constraints()) {
        EXPECT_EQ(constraint.constant(), 0);
        EXPECT_EQ(constraint.firstAnchor().attribute, constraint.secondAnchor().attribute);
        EXPECT_EQ(constraint.secondAnchor().item.lock(), container);
    }
    EXPECT_THAT(parent->childViewControllers(), ::testing::ElementsAre(container->hostingController()));
    EXPECT_EQ(container->frame(), platform::CGRect{});
}

TEST_F(HostingContainerTest, TakesTheSizeOfItsSuperviewAndLaysItsContentOut) {
    const auto container = make();
    const auto above = std::make_shared<UIView>(platform::CGRect{{7, 9}, {120, 80}});
    container->setFrame({{1, 2}, {3, 4}});
    above->addSubview(container);
    EXPECT_EQ(container->frame(), (platform::CGRect{{0, 0}, {120, 80}}));
    container->layoutIfNeeded();
    EXPECT_EQ(container->subviews().front()->frame(), (platform::CGRect{{0, 0}, {120, 80}}));
    int signals = 0;
    above->setChangeHandler(
        [&](UIView& changed) { signals += &changed == container->subviews().front().get(); });
    container->hostingController()->rootView()->arcChartViewModel->setProgress(0.5);
    EXPECT_GE(signals, 1); // a change of the model rises to the root
    container->removeFromSuperview();
    EXPECT_EQ(container->frame(), (platform::CGRect{{0, 0}, {120, 80}}));
}

TEST_F(HostingContainerTest, LogsAndDetachesWhenReleased) {
    auto container = make();
    const std::shared_ptr<UIViewController> hosting = container->hostingController();
    EXPECT_THAT(logOf([&] { container.reset(); }), ::testing::EndsWith("] HostingContainer deinit\n"));
    EXPECT_TRUE(parent->childViewControllers().empty());
    EXPECT_EQ(hosting->parentViewController(), nullptr);
    EXPECT_EQ(hosting->view()->superview(), nullptr);
}

TEST_F(HostingContainerTest, MayBeEmptyFromAnArchiveButNotFromAFrame) {
    const auto archived = std::make_shared<Container>(platform::NSCoder{});
    EXPECT_FALSE(archived->hostingController()->rootView().has_value());
    EXPECT_TRUE(archived->subviews().empty());
    EXPECT_DEATH(Container::initWithFrame({}), "cannot be made from a frame alone");
}

} // namespace
