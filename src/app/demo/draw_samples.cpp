// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/demo/draw_samples.h"

#include <QJsonArray>
#include <QSemaphore>
#include <QThread>
#include <QThreadPool>

#include "imaging/metadata_writer.h"
#include "imaging/thumbnail.h"
#include "shell/files.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kQuality = 92;
// A picture in the making takes up to 200 MB.
constexpr int kMostAtOnce = 4;
constexpr int kBetweenProgress = 30;  // milliseconds

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

  /// What nobody will take is not begun.
  ~Studio() { pool_.clear(); }

  bool Wait(std::size_t index, int milliseconds) {
    return jobs_[index]->done.tryAcquire(1, milliseconds);
  }
  /// After `Wait` has said so, once.
  Result<QByteArray> Take(std::size_t index) {
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

demo::DrawnSamples demo::DrawSamples(const std::vector<Sample>& samples, const QString& folder,
                                     const DrawObserver& observer) {
  const QString target = AbsolutePath(folder);
  DrawnSamples drawn;
  if (!QDir().mkpath(target)) {
    drawn.failures.Add(target, u"Folder could not be made"_s);
    return drawn;
  }
  const auto pathOf = [&target](const Sample& sample) {
    return target + u'/' + QString::fromUtf16(sample.name);
  };
  std::vector<Sample> missing;
  for (const Sample& sample : samples) {
    if (QFileInfo::exists(pathOf(sample)))
      drawn.failures.Add(pathOf(sample), u"File already exists"_s);
    else
      missing.push_back(sample);
  }
  Studio studio(missing);
  const int total = static_cast<int>(missing.size());
  for (int i = 0; i < total; ++i) {
    const auto index = static_cast<std::size_t>(i);
    const QString path = pathOf(missing[index]);
    do {
      if (!observer({i, total, path, drawn})) return drawn;
    } while (!studio.Wait(index, kBetweenProgress));
    const Result<QByteArray> photo = studio.Take(index);
    const Outcome written =
        photo ? WriteFileAtomically(path, *photo) : Outcome(Failure{photo.Reason()});
    if (written)
      drawn.paths.append(path);
    else
      drawn.failures.Add(path, written.Reason());
  }
  return drawn;
}

int demo::DrawSamples(const std::vector<Sample>& samples, const QString& folder,
                      const Console& console) {
  const QString target = AbsolutePath(folder);
  if (!QDir().mkpath(target)) {
    console.Refuse(OnOneLine(target) + u": Folder could not be made"_s);
    return kExitSomeFailed;
  }
  int begun = 0;
  qsizetype told = 0;
  const auto tell = [&](const DrawnSamples& drawn) {
    console.ClearProgress();
    for (; !console.Json() && told < drawn.paths.size(); ++told)
      console.Line(OnOneLine(drawn.paths[told]));
  };
  const DrawnSamples drawn = DrawSamples(samples, target, [&](const DrawProgress& progress) {
    if (begun == progress.done + 1) return true;
    begun = progress.done + 1;
    tell(progress.soFar);
    console.Progress(u"Drawing %1 of %2"_s.arg(begun).arg(progress.total));
    return true;
  });
  tell(drawn);
  if (console.Json())
    console.Document(QJsonDocument(QJsonArray::fromStringList(drawn.paths)));
  else
    console.Line(u"%1 %2 drawn in %3"_s.arg(QString::number(drawn.paths.size()),
                                            drawn.paths.size() == 1 ? u"photo"_s : u"photos"_s,
                                            OnOneLine(target)));
  console.Failures(drawn.failures);
  return drawn.failures.Empty() ? kExitDone : kExitSomeFailed;
}

}  // namespace zqm
