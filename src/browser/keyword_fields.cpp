// SPDX-License-Identifier: GPL-3.0-or-later
#include "browser/keyword_fields.h"

#include <utility>

#include "shell/dates.h"
#include "shell/error.h"
#include "shell/messages.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr int kTicksToWait = 2;
constexpr int kNextTryMilliseconds = 50;
int tickMilliseconds = 1000;

/// A text as the catalogue keeps it, or nothing for one that isn't valid.
using Store = std::optional<QString> (*)(const QString& text);

std::optional<QString> AnyText(const QString& text) {
  return text;
}

/// An empty date clears.
std::optional<QString> DateText(const QString& text) {
  if (text.trimmed().isEmpty()) return QString();
  const auto date = ParseDate(text);
  if (!date) return std::nullopt;
  return date->date().toString(Qt::ISODate);
}

std::optional<QString> RatingText(const QString& text) {
  const bool valid = text.size() == 1 && text.at(0) >= u'1' && text.at(0) <= u'5';
  return valid ? std::optional(text) : std::nullopt;
}

std::optional<QString> FlagText(const QString& text) {
  const bool valid = text == u"Flagged" || text == u"Rejected" || text == u"Unflagged";
  return valid ? std::optional(text) : std::nullopt;
}

struct FieldRule {
  const char16_t* word;
  Column column;
  Store store;
  bool waits;  ///< for the user's last key; a flag is saved at once
};

constexpr std::array<FieldRule, kKeywordFieldCount> kRules = {{
    {u"Notes", Column::Notes, AnyText, true},
    {u"Author", Column::Author, AnyText, true},
    {u"Date", Column::Date, DateText, true},
    {u"Rating", Column::Rating, RatingText, true},
    {u"Categories", Column::Categories, AnyText, true},
    {u"Tags", Column::Tags, AnyText, true},
    {u"Flag", Column::Flag, FlagText, false},
}};

const FieldRule& RuleOf(KeywordField field) {
  return kRules[static_cast<std::size_t>(field)];
}

/// A stored text as the panel shows it.
QString Shown(KeywordField field, const QString& stored) {
  if (field != KeywordField::Date) return stored;
  const QDate date = QDate::fromString(stored, Qt::ISODate);
  return date.isValid() ? ShortDate(date) : stored;
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
  if (Unsaved()) counter_.start(RuleOf(field_).waits ? tickMilliseconds : 1);
}

void AutoSave::Tick() {
  if (RuleOf(field_).waits && ++ticks_ < kTicksToWait) return;
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
    field->Load(Shown(field->Field(), photos.GetField(RuleOf(field->Field()).column)));
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
  const FieldRule& rule = RuleOf(field.Field());
  const QString text = field.Text();
  const auto stored = rule.store(text);
  // What isn't valid is passed over: the row keeps its value, the field its text.
  if (!stored) return true;
  const QStringList paths = selected_();
  const QString word = QString::fromUtf16(rule.word);
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
  PhotoRecordset& photos = catalogue_.Photos();
  std::optional<BusyRun> run;
  if (!paths.isEmpty()) run.emplace(busy_, u"Auto saving keywords..."_s);
  if (const Outcome first = photos.MoveFirst(); !first) return first;
  int done = 0;
  for (const QString& path : paths) {
    if (photos.LocateRow(path)) photos.SetField(RuleOf(field).column, stored);
    run->Progress(++done, static_cast<int>(paths.size()));
  }
  return photos.MoveFirst();
}

bool KeywordFields::CheckUpdate() {
  bool saved = true;
  for (const auto& field : fields_)
    if (field->Unsaved()) saved = Save(*field) && saved;
  return saved;
}

QStringList CategoryNames(const QString& stored) {
  return stored.split(u',', Qt::SkipEmptyParts);
}

QString CategoriesText(const QStringList& names) {
  return names.isEmpty() ? QString() : u',' + names.join(u',') + u',';
}

}  // namespace zqm
