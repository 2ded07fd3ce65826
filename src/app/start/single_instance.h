// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLocalServer>
#include <QObject>
#include <QString>
#include <QStringList>

class QLocalSocket;

namespace zqm {

/// One window a home. The running one listens; a later start hands it the paths that it was given
/// and leaves.
class SingleInstance : public QObject {
  Q_OBJECT
 public:
  /// `folder` tells homes apart: the program's folder of application data.
  explicit SingleInstance(const QString& folder);

  /// Whether a running window has taken the paths and comes to the front.
  bool ActivatePrevInstance(const QStringList& paths) const;
  /// Hears later starts from now on. To be called by who holds the home's lock: what a killed
  /// process has left is cleared away.
  void Listen();
  /// Hears none any more.
  void Close() { server_.close(); }

  /// Where the running one is reached.
  const QString& Address() const { return address_; }

 Q_SIGNALS:
  void Activated(const QStringList& paths);

 private:
  void Greet();
  void Hear(QLocalSocket& socket);

  QString address_;
  QLocalServer server_;
};

}  // namespace zqm
