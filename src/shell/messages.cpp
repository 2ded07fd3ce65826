// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/messages.h"

#include <cstdio>
#include <utility>

namespace zqm {
namespace {

MessageHandler& CurrentMessageHandler() {
  static MessageHandler handler;
  return handler;
}

PickHandler& CurrentPickHandler() {
  static PickHandler handler;
  return handler;
}

Answer HarmlessAnswer(Buttons buttons) {
  switch (buttons) {
    case Buttons::OkCancel:
    case Buttons::YesNoCancel:
      return Answer::Cancel;
    case Buttons::YesNo:
    case Buttons::YesNoNeeded:
      return Answer::No;
    case Buttons::Ok:
      break;
  }
  return Answer::Ok;
}

}  // namespace

Answer MsgBox(const QString& text, MessageKind kind, Buttons buttons) {
  // A copy: the handler may set another one while it runs.
  if (const MessageHandler handler = CurrentMessageHandler()) return handler(text, kind, buttons);
  std::fprintf(stderr, "%s\n", text.toUtf8().constData());
  return HarmlessAnswer(buttons);
}

MessageHandler SetMessageHandler(MessageHandler handler) {
  return std::exchange(CurrentMessageHandler(), std::move(handler));
}

QString Pick(const PickRequest& request) {
  const PickHandler handler = CurrentPickHandler();
  return handler ? handler(request) : QString();
}

PickHandler SetPickHandler(PickHandler handler) {
  return std::exchange(CurrentPickHandler(), std::move(handler));
}

}  // namespace zqm
