// SPDX-License-Identifier: MIT
#include "hosts/app/UseRows.hpp"

#include "hosts/app/Words.hpp"
#include "hosts/qt/HostText.hpp"

namespace vantor::hosts::app {

UseRow applicationRow(const platform::ApplicationUse& use) {
    UseRow row;
    row.kind = use.isService ? UseRowKind::rest : UseRowKind::application;
    row.key = (use.isService ? "service " : "application ") + use.id + ' ' + use.name;
    row.name = use.isService ? qt::hostText("app_SERVICES") : QString::fromStdString(use.name);
    row.detail = processesText(use.processes.size());
    row.icon = QString::fromStdString(use.icon);
    row.canEnd = !use.isService;
    if (!use.isService) {
        row.use = use;
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
