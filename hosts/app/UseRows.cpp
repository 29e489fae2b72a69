// SPDX-License-Identifier: MIT
#include "hosts/app/UseRows.hpp"

#include "hosts/app/Words.hpp"
#include "hosts/qt/HostText.hpp"
#include "pages/PageWords.hpp"

namespace vantor::hosts::app {

std::string applicationKey(const platform::ApplicationUse& use) {
    return (use.isService ? "service " : "application ") + use.id + ' ' + use.name;
}

UseRow applicationRow(const platform::ApplicationUse& use, const Unfolded& behind,
                      const ProcessFigures& figures) {
    UseRow row;
    row.kind = use.isService ? UseRowKind::rest : UseRowKind::application;
    row.key = applicationKey(use);
    row.name = QString::fromStdString(applicationWords(use));
    row.icon = QString::fromStdString(use.icon);
    row.canEnd = !use.isService;
    if (!use.isService) {
        row.use = use;
        row.detail = processesText(use.processes.size());
    }
    if (const auto found = behind.find(row.key); found != behind.end() && row.use) {
        row.use->processes.clear();
        for (const ProcessRow& process : found->second.rows) {
            row.use->processes.push_back(process.use.identity);
            row.figures.push_back(figures(process));
        }
    }
    return row;
}

UseRow moreRow(std::size_t count) {
    UseRow row;
    row.name = qt::hostText("app_MORE", "n", numberText(static_cast<double>(count), 0).toStdString());
    return row;
}

UseRow othersRow() {
    UseRow row;
    row.kind = UseRowKind::rest;
    row.key = "others";
    row.name = qt::hostText("app_OTHERS");
    return row;
}

} // namespace vantor::hosts::app
