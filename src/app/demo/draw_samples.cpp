// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/demo/draw_samples.h"

#include <QJsonArray>
#include <QSemaphore>
#include <QThread>
#include <QThreadPool>

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

int demo::DrawSamples(const std::vector<Sample>& samples, const QString& folder,
                      const Console& console) {
  const QString target = AbsolutePath(folder);
  if (!QDir().mkpath(target)) {
    console.Refuse(OnOneLine(target) + u": Folder could not be made"_s);
    return kExitSomeFailed;
  }
  const auto pathOf = [&target](const Sample& sample) {
    return target + u'/' + QString::fromUtf16(sample.name);
  };
  FailureList failures;
  std::vector<Sample> missing;
  for (const Sample& sample : samples) {
    if (QFileInfo::exists(pathOf(sample)))
      failures.Add(pathOf(sample), u"File already exists"_s);
    else
      missing.push_back(sample);
  }
  Studio studio(missing);
  QStringList paths;
  for (std::size_t i = 0; i < missing.size(); ++i) {
    const QString path = pathOf(missing[i]);
    console.Progress(u"Drawing %1 of %2"_s.arg(i + 1).arg(missing.size()));
    const Result<QByteArray> photo = studio.Take(i);
    const Outcome written =
        photo ? WriteFileAtomically(path, *photo) : Outcome(Failure{photo.Reason()});
    console.ClearProgress();
    if (!written) {
      failures.Add(path, written.Reason());
      continue;
    }
    paths.append(path);
    if (!console.Json()) console.Line(OnOneLine(path));
  }
  if (console.Json())
    console.Document(QJsonDocument(QJsonArray::fromStringList(paths)));
  else
    console.Line(u"%1 %2 drawn in %3"_s.arg(QString::number(paths.size()),
                                            paths.size() == 1 ? u"photo"_s : u"photos"_s,
                                            OnOneLine(target)));
  console.Failures(failures);
  return failures.Empty() ? kExitDone : kExitSomeFailed;
}

}  // namespace zqm
