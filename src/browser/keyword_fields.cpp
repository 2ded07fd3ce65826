// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/keyword_fields.h"

#include <utility>

#include "shell/error.h"
#include "shell/messages.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kTicksToWait = 2;
constexpr int kNextTryMilliseconds = 50;
int tickMilliseconds = 1000;

/// For the user's last key; a flag is saved at once.
bool Waits(KeywordField field) {
  return field != KeywordField::Flag;
}

}  // namespace

AutoSave::AutoSave(KeywordField field, QObject* parent) : QObject(parent), field_(field) {
  connect(&counter_, &QTimer::timeout, this, &AutoSave::Tick);
}

void AutoSave::SetTickMilliseconds(int milliseconds) {
  tickMilliseconds = milliseconds;
}

void AutoSave::Load(const QString& text) {
  counter_.stop();
  text_ = saved_ = text;
  Q_EMIT Loaded(text);
}

void AutoSave::Edit(const QString& text) {
  text_ = text;
  Wait();
}

void AutoSave::KeyDown() {
  if (Unsaved()) counter_.stop();
}

void AutoSave::KeyUp() {
  if (Unsaved()) Wait();
}

void AutoSave::Wait() {
  ticks_ = 0;
  counter_.stop();
  if (Unsaved()) counter_.start(Waits(field_) ? tickMilliseconds : 1);
}

void AutoSave::Tick() {
  if (Waits(field_) && ++ticks_ < kTicksToWait) return;
  counter_.stop();
  Q_EMIT Due();
}

KeywordFields::KeywordFields(Catalogue& catalogue, Busy& busy,
                             std::function<QStringList()> selected)
    : catalogue_(catalogue), busy_(busy), selected_(std::move(selected)) {
  for (int i = 0; i < kKeywordFieldCount; ++i) {
    auto& field = fields_[static_cast<std::size_t>(i)];
    field = std::make_unique<AutoSave>(static_cast<KeywordField>(i), nullptr);
    connect(field.get(), &AutoSave::Due, this,
            [this, saver = field.get()] { SaveWhenDue(*saver); });
  }
}

KeywordFields::~KeywordFields() = default;

AutoSave& KeywordFields::Field(KeywordField field) {
  return *fields_[static_cast<std::size_t>(field)];
}

void KeywordFields::LoadRow() {
  const PhotoRecordset& photos = catalogue_.Photos();
  for (const auto& field : fields_)
    field->Load(ShownText(field->Field(), photos.GetField(KeywordColumn(field->Field()))));
}

void KeywordFields::ResetKeywords() {
  for (const auto& field : fields_)
    field->Load(QString());
}

void KeywordFields::SaveWhenDue(AutoSave& field) {
  // A run that yields must not be entered again by another value's timer.
  if (!queue_.isEmpty() || busy_.IsUp()) {
    QTimer::singleShot(kNextTryMilliseconds, &field, [this, &field] {
      if (field.Unsaved()) SaveWhenDue(field);
    });
    return;
  }
  Guarded("frmmain", "Timer_Timer", [&] { Save(field); });
}

bool KeywordFields::Save(AutoSave& field) {
  if (catalogue_.Photos().Count() == 0) return true;
  const QString text = field.Text();
  const auto stored = StoredText(field.Field(), text);
  // What isn't valid is passed over: the row keeps its value, the field its text.
  if (!stored) return true;
  const QStringList paths = selected_();
  const QString word = KeywordWord(field.Field());
  queue_.append(word);
  const Outcome assigned = Assign(field.Field(), *stored, paths);
  queue_.removeOne(word);
  if (!assigned) {
    MsgBox(u"The changes could not be saved: "_s + assigned.Reason(), MessageKind::Warning);
    return false;
  }
  field.MarkSaved(text);
  Q_EMIT Saved(field.Field(), paths);
  return true;
}

Outcome KeywordFields::Assign(KeywordField field, const QString& stored, const QStringList& paths) {
  std::optional<BusyRun> run;
  if (!paths.isEmpty()) run.emplace(busy_, u"Auto saving keywords..."_s);
  return AssignKeywords(
      catalogue_.Photos(), {{field, stored}}, paths,
      [&run, total = static_cast<int>(paths.size())](int done) { run->Progress(done, total); });
}

bool KeywordFields::CheckUpdate() {
  bool saved = true;
  for (const auto& field : fields_)
    if (field->Unsaved()) saved = Save(*field) && saved;
  return saved;
}

}  // namespace zqm
