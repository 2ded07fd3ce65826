// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/start/single_instance.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QTimer>

#include "shell/error.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

// The running window answers between two steps of whatever it is doing.
constexpr int kPatienceMilliseconds = 5000;
constexpr qint64 kMostBytes = qint64{4} << 20;
constexpr char kTaken[] = "taken\n";

/// A socket's path: in the user's own runtime folder, where nobody else can put one in its place,
/// and short, since the system takes about a hundred bytes.
QString AddressFor(const QString& folder) {
  const QByteArray hash =
      QCryptographicHash::hash(AbsolutePath(folder).toUtf8(), QCryptographicHash::Sha256);
  const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  return (runtime.isEmpty() ? folder : runtime) + u"/zolmira-qm-"_s +
         QString::fromLatin1(hash.toHex().left(24));
}

}  // namespace

SingleInstance::SingleInstance(const QString& folder) : address_(AddressFor(folder)) {
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  connect(&server_, &QLocalServer::newConnection, this, &SingleInstance::Greet);
}

bool SingleInstance::ActivatePrevInstance(const QStringList& paths) const {
  QLocalSocket socket;
  socket.connectToServer(address_);
  if (!socket.waitForConnected(kPatienceMilliseconds)) return false;
  socket.write(QJsonDocument(QJsonArray::fromStringList(paths)).toJson(QJsonDocument::Compact) +
               '\n');
  while (socket.bytesToWrite() > 0)
    if (!socket.waitForBytesWritten(kPatienceMilliseconds)) return false;
  while (!socket.canReadLine())
    if (!socket.waitForReadyRead(kPatienceMilliseconds)) return false;
  return socket.readLine() == kTaken;
}

void SingleInstance::Listen() {
  QLocalServer::removeServer(address_);
  // Without it a second start says that the program is running, which is true as well.
  server_.listen(address_);
}

void SingleInstance::Greet() {
  while (QLocalSocket* socket = server_.nextPendingConnection()) {
    socket->setReadBufferSize(kMostBytes);
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QLocalSocket::readyRead, this, [this, socket] { Hear(*socket); });
    QTimer::singleShot(kPatienceMilliseconds, socket, &QLocalSocket::abort);
    Hear(*socket);
  }
}

void SingleInstance::Hear(QLocalSocket& socket) {
  if (!socket.canReadLine()) {
    if (socket.bytesAvailable() >= kMostBytes) socket.abort();
    return;
  }
  // One line is all that there is to say.
  disconnect(&socket, &QLocalSocket::readyRead, this, nullptr);
  const QJsonDocument message = QJsonDocument::fromJson(socket.readLine());
  if (!message.isArray()) return socket.abort();
  QStringList paths;
  for (const QJsonValue& path : message.array())
    if (path.isString()) paths.append(path.toString());
  socket.write(kTaken);
  socket.disconnectFromServer();
  // From the event loop: opening a path takes longer than a socket's own call should.
  QTimer::singleShot(0, this, [this, paths] {
    Guarded("SingleInstance", "Activated", [&] { Q_EMIT Activated(paths); });
  });
}

}  // namespace zqm
