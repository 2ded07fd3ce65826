// SPDX-License-Identifier: GPL-3.0-or-later
#include <QJsonArray>
#include <QSemaphore>
#include <QThread>
#include <QThreadPool>

#include "app/commands/commands.h"
#include "app/demo/samples.h"
#include "imaging/jpeg_segments.h"
#include "imaging/thumbnail.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kQuality = 92;
// A picture in the making takes up to 200 MB.
constexpr int kMostAtOnce = 4;

Result<QByteArray> DrawPhoto(const demo::Sample& sample) {
  const QByteArray jpeg = EncodeJpeg(sample.draw(sample.size), kQuality);
  return WithMetadata(jpeg, demo::ParametersOf(sample));
}

/// Photos in the table's order, drawn ahead on a pool; what a caller hasn't taken yet is bounded
/// by the pool's own size in work and by the table in memory.
class Studio {
 public:
  explicit Studio(const std::vector<demo::Sample>& samples) {
    pool_.setMaxThreadCount(std::min(QThread::idealThreadCount(), kMostAtOnce));
    for (const demo::Sample& sample : samples) {
      Job& job = *jobs_.emplace_back(std::make_unique<Job>());
      pool_.start([&job, &sample] {
        job.photo = DrawPhoto(sample);
        job.done.release();
      });
    }
  }

  Result<QByteArray> Take(std::size_t index) {
    jobs_[index]->done.acquire();
    return std::exchange(jobs_[index]->photo, Failure{});
  }

 private:
  struct Job {
    QSemaphore done;
    Result<QByteArray> photo = Failure{};
  };
  std::vector<std::unique_ptr<Job>> jobs_;
  QThreadPool pool_;  // last: waits for its work before the jobs go
};

}  // namespace

int RunDemo(const QString& folder, const Console& console) {
  const QString target = AbsolutePath(folder);
  if (!QDir().mkpath(target)) {
    console.ErrorLine(target + u": Folder could not be made"_s);
    return kExitSomeFailed;
  }
  const std::vector<demo::Sample>& samples = demo::Samples();
  Studio studio(samples);
  FailureList failures;
  QStringList paths;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const QString path = target + u'/' + QString::fromUtf16(samples[i].name);
    console.Progress(u"Drawing %1 of %2"_s.arg(i + 1).arg(samples.size()));
    const Result<QByteArray> photo = studio.Take(i);
    const Outcome written =
        photo ? WriteFileAtomically(path, *photo) : Outcome(Failure{photo.Reason()});
    console.ClearProgress();
    if (!written) {
      failures.Add(path, written.Reason());
      continue;
    }
    paths.append(path);
    if (!console.Json()) console.Line(path);
  }
  if (console.Json())
    console.Document(QJsonDocument(QJsonArray::fromStringList(paths)));
  else
    console.Line(u"%1 photos drawn in %2"_s.arg(paths.size()).arg(target));
  console.Failures(failures);
  return failures.Empty() ? kExitDone : kExitSomeFailed;
}

}  // namespace zqm
