// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ui/calendar_popup.h"

#include <QCalendarWidget>
#include <QMenu>
#include <QWidgetAction>

namespace zqm {

std::optional<QDate> PickDate(QWidget* button, std::optional<QDate> shown) {
  QMenu menu(button);
  auto* calendar = new QCalendarWidget;
  calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
  if (shown) calendar->setSelectedDate(*shown);
  auto* action = new QWidgetAction(&menu);
  action->setDefaultWidget(calendar);
  menu.addAction(action);
  std::optional<QDate> chosen;
  const auto choose = [&menu, &chosen](QDate date) {
    chosen = date;
    menu.close();
  };
  QObject::connect(calendar, &QCalendarWidget::clicked, &menu, choose);
  QObject::connect(calendar, &QCalendarWidget::activated, &menu, choose);
  menu.exec(button->mapToGlobal(button->rect().bottomLeft()));
  return chosen;
}

}  // namespace zqm
