// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/ui/message_boxes.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <array>
#include <utility>

#include "shell/messages.h"

namespace zqm {
namespace {

constexpr std::pair<MessageKind, QMessageBox::Icon> kIcons[] = {
    {MessageKind::Plain, QMessageBox::NoIcon},
    {MessageKind::Information, QMessageBox::Information},
    {MessageKind::Warning, QMessageBox::Warning},
    {MessageKind::Critical, QMessageBox::Critical},
    {MessageKind::Question, QMessageBox::Question},
};

struct ButtonSet {
  Buttons buttons;
  QMessageBox::StandardButtons shown;
  QMessageBox::StandardButton refuses;  ///< what Escape and the window's own button mean
};
constexpr ButtonSet kButtonSets[] = {
    {Buttons::Ok, QMessageBox::Ok, QMessageBox::Ok},
    {Buttons::OkCancel, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Cancel},
    {Buttons::YesNo, QMessageBox::Yes | QMessageBox::No, QMessageBox::No},
    {Buttons::YesNoCancel, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
     QMessageBox::Cancel},
};

constexpr std::pair<int, Answer> kAnswers[] = {
    {QMessageBox::Ok, Answer::Ok},
    {QMessageBox::Cancel, Answer::Cancel},
    {QMessageBox::Yes, Answer::Yes},
    {QMessageBox::No, Answer::No},
};

template <class Rows, class Key>
auto ValueOf(const Rows& rows, Key key) {
  for (const auto& [name, value] : rows)
    if (name == key) return value;
  return std::begin(rows)->second;
}

/// The standard buttons would let Escape mean No.
Answer AskYesNo(QMessageBox& box) {
  QPushButton* yes = box.addButton(QMessageBox::tr("&Yes"), QMessageBox::AcceptRole);
  box.addButton(QMessageBox::tr("&No"), QMessageBox::DestructiveRole);
  box.setDefaultButton(yes);
  box.exec();
  return box.clickedButton() == yes ? Answer::Yes : Answer::No;
}

Answer ShowMessage(const QString& text, MessageKind kind, Buttons buttons) {
  QMessageBox box(QApplication::activeWindow());
  box.setWindowTitle(QString::fromUtf16(kMessageTitle));
  box.setTextFormat(Qt::PlainText);
  box.setText(text);
  box.setTextInteractionFlags(Qt::TextSelectableByMouse);
  box.setIcon(ValueOf(kIcons, kind));
  if (buttons == Buttons::YesNoNeeded) return AskYesNo(box);
  for (const ButtonSet& set : kButtonSets) {
    if (set.buttons != buttons) continue;
    box.setStandardButtons(set.shown);
    box.setEscapeButton(set.refuses);
    box.setDefaultButton(set.refuses);
  }
  return ValueOf(kAnswers, box.exec());
}

/// The filter that names an extension, or the first.
QString FilterOf(const QStringList& filters, const QString& extension) {
  for (const QString& filter : filters)
    if (filter.contains(QStringLiteral("*.") + extension + u')', Qt::CaseInsensitive))
      return filter;
  return filters.value(0);
}

/// Whether to replace a file is asked by whoever writes it, in words of its own. A name without an
/// extension gets that of the filter.
QString PickToSave(const PickRequest& request, QWidget* parent) {
  QString filter = FilterOf(request.filters, QFileInfo(request.start).suffix());
  const QString path = QFileDialog::getSaveFileName(parent, request.title, request.start,
                                                    request.filters.join(QStringLiteral(";;")),
                                                    &filter, QFileDialog::DontConfirmOverwrite);
  if (path.isEmpty() || !QFileInfo(path).suffix().isEmpty()) return path;
  const qsizetype from = filter.lastIndexOf(QStringLiteral("*."));
  const qsizetype to = filter.indexOf(u')', from);
  return from < 0 || to < 0 ? path : path + filter.mid(from + 1, to - from - 1);
}

QString ShowPicker(const PickRequest& request) {
  QWidget* parent = QApplication::activeWindow();
  const QString filters = request.filters.join(QStringLiteral(";;"));
  switch (request.what) {
    case PickRequest::What::OpenFile:
      return QFileDialog::getOpenFileName(parent, request.title, request.start, filters);
    case PickRequest::What::SaveFile:
      return PickToSave(request, parent);
    case PickRequest::What::Folder:
      break;
  }
  return QFileDialog::getExistingDirectory(parent, request.title, request.start);
}

}  // namespace

void UseMessageBoxes() {
  SetMessageHandler(ShowMessage);
  SetPickHandler(ShowPicker);
}

}  // namespace zqm
