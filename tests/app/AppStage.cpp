// SPDX-License-Identifier: MIT
#include "AppStage.hpp"

#include "DemoInPlace.hpp"
#include "Eventually.hpp"
#include "hosts/app/Snapshot.hpp"
#include "hosts/common/HeadlessLoop.hpp"
#include "hosts/common/HostDisposal.hpp"
#include "hosts/common/HostWorkload.hpp"
#include "hosts/qt/HostText.hpp"
#include "platform/core/MakeForEver.hpp"

#include <QApplication>
#include <chrono>
#include <clocale>

namespace vantor::tests {

void putWholeDemoInPlace() {
    putDemoInPlace();
    platform::makeForEver<hosts::common::HostWorkload>(true);
    platform::makeForEver<hosts::common::HostDisposal>(true);
}

bool setLanguage(const char* locale) {
    qputenv("LC_ALL", locale);
    if (std::setlocale(LC_ALL, "") == nullptr) {
        return false;
    }
    putWholeDemoInPlace();
    QApplication::setLayoutDirection(hosts::qt::isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    return true;
}

std::unique_ptr<hosts::app::AppContent> shownContent(hosts::app::PageKind page,
                                                     platform::Appearance appearance, double textScale) {
    using namespace hosts::app;
    auto content = std::make_unique<AppContent>(true);
    content->setAttribute(Qt::WA_DontShowOnScreen);
    const Look look = Look::of(appearance, textScale, {});
    applyLook(*content, look);
    content->setPage(page);
    content->resize(look.pixels(usualWidth), look.pixels(usualHeight));
    content->show();
    hosts::common::VirtualTime time;
    content->setSeen(true);
    for (int samples = 0; samples < 3; ++samples) {
        content->refresh();
        const int before = content->samples();
        (void)time.turnUntil([&] { return content->samples() > before; }, 1);
    }
    for (int pass = 0; pass < 3; ++pass) { // a list takes its height, then the page, then its scroll area
        QApplication::processEvents();
    }
    return content;
}

bool turnUntil(const std::function<bool()>& done) {
    return eventually([&done] {
        platform::RunLoop::main().turn(std::chrono::steady_clock::now());
        return done();
    });
}

} // namespace vantor::tests
