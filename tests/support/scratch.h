// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <stdexcept>

namespace zqm::test {

/// A folder that goes away with the test.
class Scratch {
 public:
  Scratch() = default;
  /// In a folder of choice, such as one on another file system.
  explicit Scratch(const QString& parent) : folder_(parent + QStringLiteral("/zqm-XXXXXX")) {}

  bool IsValid() const { return folder_.isValid(); }
  QString Path(const QString& name = QString()) const {
    return name.isEmpty() ? folder_.path() : folder_.filePath(name);
  }
  QString Path(const char* name) const { return Path(QString::fromUtf8(name)); }

  /// Makes the folders on the way; gives the path.
  QString Write(const QString& name, const QByteArray& bytes) const {
    const QString path = Path(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QFile::WriteOnly) || file.write(bytes) != bytes.size()) {
      throw std::runtime_error("the test can't write its own file");
    }
    return path;
  }
  QString Write(const char* name, const QByteArray& bytes) const {
    return Write(QString::fromUtf8(name), bytes);
  }

  static QByteArray Read(const QString& path) {
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("(can't be read)");
  }

  /// Names of all that stands in it, hidden ones too, sorted.
  QStringList Names() const {
    return QDir(Path()).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
  }

 private:
  QTemporaryDir folder_;
};

/// Makes a locale the user's for the length of a scope.
class ScopedLocale {
 public:
  explicit ScopedLocale(const QLocale& locale) { QLocale::setDefault(locale); }
  explicit ScopedLocale(const char* name) : ScopedLocale(QLocale(QString::fromUtf8(name))) {}
  ~ScopedLocale() { QLocale::setDefault(before_); }
  ScopedLocale(const ScopedLocale&) = delete;
  ScopedLocale& operator=(const ScopedLocale&) = delete;

 private:
  QLocale before_;  // constructed first: what was the default
};

}  // namespace zqm::test
