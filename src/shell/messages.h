// SPDX-License-Identifier: GPL-3.0-or-later
// Every message to the user and every question for a file goes through here, so that windows, the
// command line and tests can each answer in their own way.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace zqm {

inline constexpr char16_t kMessageTitle[] = u"Zolmira QM";

enum class MessageKind { Plain, Information, Warning, Critical, Question };
enum class Buttons {
  Ok,
  OkCancel,
  YesNo,
  YesNoCancel,
  YesNoNeeded,  ///< Yes is what Enter means, and nothing but the two buttons answers
};
enum class Answer { Ok, Cancel, Yes, No };

using MessageHandler =
    std::function<Answer(const QString& text, MessageKind kind, Buttons buttons)>;

/// Shows a message titled `kMessageTitle`. Without a handler the text goes to standard error and
/// the answer is the one that changes nothing (Ok, Cancel, No).
Answer MsgBox(const QString& text, MessageKind kind = MessageKind::Information,
              Buttons buttons = Buttons::Ok);

/// Returns the handler that was set before.
MessageHandler SetMessageHandler(MessageHandler handler);

struct PickRequest {
  enum class What { OpenFile, SaveFile, Folder };
  What what = What::OpenFile;
  QString title;
  QString start;        ///< a folder or a proposed path
  QStringList filters;  ///< "Photos (*.jpg *.png)"
};

using PickHandler = std::function<QString(const PickRequest&)>;

/// A path, or "" when the user cancels or nobody is there to ask.
QString Pick(const PickRequest& request);
PickHandler SetPickHandler(PickHandler handler);

}  // namespace zqm
