// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/single_instance.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QTimer>

#include "shell/error.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kPatienceMilliseconds = 3000;
constexpr qint64 kMostBytes = qint64{4} << 20;
constexpr char kTaken[] = "taken";

}  // namespace

SingleInstance::SingleInstance(const QString& folder) {
  const QByteArray hash =
      QCryptographicHash::hash(AbsolutePath(folder).toUtf8(), QCryptographicHash::Sha256);
  name_ = u"zolmira-qm-"_s + QString::fromLatin1(hash.toHex().left(24));
  // Nobody else's paths are opened here.
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  connect(&server_, &QLocalServer::newConnection, this, &SingleInstance::Greet);
}

bool SingleInstance::ActivatePrevInstance(const QStringList& paths) const {
  QLocalSocket socket;
  socket.connectToServer(name_);
  if (!socket.waitForConnected(kPatienceMilliseconds)) return false;
  socket.write(QJsonDocument(QJsonArray::fromStringList(paths)).toJson(QJsonDocument::Compact) +
               '\n');
  return socket.waitForReadyRead(kPatienceMilliseconds) && socket.readAll().startsWith(kTaken);
}

void SingleInstance::Listen() {
  QLocalServer::removeServer(name_);
  // Without it a second start says that the program is running, which is true as well.
  server_.listen(name_);
}

void SingleInstance::Greet() {
  while (QLocalSocket* socket = server_.nextPendingConnection()) {
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    QTimer::singleShot(kPatienceMilliseconds, socket, &QLocalSocket::abort);
    const auto read = [this, socket] {
      if (socket->bytesAvailable() > kMostBytes) return socket->abort();
      if (!socket->canReadLine()) return;
      const QJsonDocument message = QJsonDocument::fromJson(socket->readLine(kMostBytes));
      if (!message.isArray()) return socket->abort();
      QStringList paths;
      for (const QJsonValue& path : message.array())
        if (path.isString()) paths.append(path.toString());
      socket->write(kTaken);
      socket->flush();
      Guarded("SingleInstance", "Greet", [&] { Q_EMIT Activated(paths); });
    };
    connect(socket, &QLocalSocket::readyRead, this, read);
    read();
  }
}

}  // namespace zqm
