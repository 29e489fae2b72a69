// SPDX-License-Identifier: MIT
// Refreshes the whole widget on the machine it runs on: refresh-driver [COUNT [MILLISECONDS]]. Before and
// after each refresh it asks for its process group, a call that the widget never makes, so that a trace can
// be cut there. Ends by printing each section's figures and what could not be read.
#include "FullRefresh.hpp"

#include <unistd.h>

#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <thread>

int main(int count, char** words) {
    const int refreshes = count > 1 ? std::atoi(words[1]) : 3;
    const std::chrono::milliseconds between(count > 2 ? std::atoi(words[2]) : 30);
    std::setlocale(LC_ALL, "");
    vantor::tests::FullRefresh widget;
    for (int i = 0; i < refreshes; ++i) {
        std::this_thread::sleep_for(between); // for the processor's ticks to move
        ::getpgrp();
        widget.refresh();
        ::getpgrp();
    }
    const vantor::TEReportTableViewController& shown = widget.controller();
    std::printf("memory %s\nstorage %s\nprocessor %s\nnetwork %s\n", shown.usedRAMLabel->text().c_str(),
                shown.usedSTORAGELabel->text().c_str(), shown.userCPULabel->text().c_str(),
                shown.dataSentNETWORKLabel->text().c_str());
    for (const vantor::platform::SourceFailure& failure : widget.machine().failures()) {
        std::printf("failed %s: %s\n", std::string(sourceName(failure.source)).c_str(),
                    failure.reason.c_str());
    }
    return 0;
}
