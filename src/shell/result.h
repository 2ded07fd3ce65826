// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <optional>
#include <utility>

namespace zqm {

/// Why something expected could not be done, in words that a failure list can show.
struct Failure {
  QString reason;
};

/// A value, or the reason why there is none. For expected failures only; faults of the program are
/// exceptions (`Error`).
template <class T>
class [[nodiscard]] Result {
 public:
  Result(T value) : value_(std::move(value)) {}                    // NOLINT(implicit)
  Result(Failure failure) : reason_(std::move(failure.reason)) {}  // NOLINT(implicit)

  explicit operator bool() const { return value_.has_value(); }
  T& operator*() { return *value_; }
  const T& operator*() const { return *value_; }
  T* operator->() { return &*value_; }
  const T* operator->() const { return &*value_; }

  /// Empty when there is a value.
  const QString& Reason() const { return reason_; }

 private:
  std::optional<T> value_;
  QString reason_;
};

/// Done, or the reason why not.
class [[nodiscard]] Outcome {
 public:
  Outcome() = default;
  Outcome(Failure failure) : reason_(std::move(failure.reason)) {}  // NOLINT(implicit)

  explicit operator bool() const { return !reason_.has_value(); }
  QString Reason() const { return reason_.value_or(QString()); }

 private:
  std::optional<QString> reason_;
};

}  // namespace zqm
