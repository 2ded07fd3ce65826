// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/template_design.h"

#include <algorithm>
#include <array>

#include "printing/print_text.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

constexpr std::array<const char16_t*, 4> kSideKeys{u"WIDTH", u"HEIGHT", u"LEFT", u"TOP"};

/// Creation order: IDs are given upwards and never again.
std::vector<int> Created(const VectorObjects& objects) {
  std::vector<int> ids = objects.Ids();
  std::ranges::sort(ids);
  return ids;
}

}  // namespace

TemplateDesign::TemplateDesign(const PrintTemplate& layout)
    : objects_(layout.objects), ids_(Created(objects_)), paper_(PaperOfSheet(layout.sheet)) {}

QString TemplateDesign::CountCaption() const {
  return u"No of picture box : %1"_s.arg(ids_.size());
}

Outcome TemplateDesign::ChangePaper(const QString& width, const QString& height,
                                    const Paper& exact) {
  auto paper = SetPaper(width, height, unit_, exact);
  if (!paper) return Failure{paper.Reason()};
  paper_ = *paper;
  return {};
}

int TemplateDesign::Add(const QColor& colour) {
  const int id = AddPictureBox(objects_, colour);
  ids_.push_back(id);
  selected_ = {id};
  return id;
}

void TemplateDesign::Remove() {
  for (const int id : selected_) {
    objects_.Remove(id);
    std::erase(ids_, id);
  }
  selected_.clear();
}

void TemplateDesign::RemoveAll() {
  selected_ = ids_;
  Remove();
}

void TemplateDesign::SendToBack() {
  for (const int id : selected_)
    objects_.SendToBack(id);
}

void TemplateDesign::BringToFront() {
  for (const int id : selected_)
    objects_.BringToFront(id);
}

void TemplateDesign::Move(const BoxPreset& preset) {
  MoveToPreset(objects_, selected_, paper_.Sheet(), preset);
}

void TemplateDesign::Select(const std::vector<int>& ids) {
  selected_.clear();
  std::ranges::copy_if(ids, std::back_inserter(selected_),
                       [&](int id) { return objects_.Contains(id); });
}

void TemplateDesign::TakeSelection(const std::vector<int>& ids) {
  const auto isAmong = [](const std::vector<int>& some, int id) {
    return std::ranges::find(some, id) != some.end();
  };
  std::vector<int> stay = selected_, join;
  std::erase_if(stay, [&](int id) { return !isAmong(ids, id); });
  std::ranges::copy_if(ids, std::back_inserter(join), [&](int id) { return !isAmong(stay, id); });
  std::ranges::sort(join);
  stay.insert(stay.end(), join.begin(), join.end());
  Select(stay);
}

std::optional<BoxMeasures> TemplateDesign::FirstBox() const {
  if (selected_.empty()) return std::nullopt;
  return MeasuresOf(objects_.Find(selected_.front())->Box());
}

bool TemplateDesign::Type(Side side, const QString& text) {
  Measure typed;
  if (selected_.empty() || !typed.Type(text, unit_)) return false;
  const bool isLength = side == Side::Width || side == Side::Height;
  if (isLength && typed.inches <= 0) return false;
  return objects_.SetObjectProperty(selected_.front(), kSideKeys[static_cast<std::size_t>(side)],
                                    QString::number(typed.Pixels(), 'g', 15));
}

bool TemplateDesign::TakeObjects(const VectorObjects& objects) {
  if (Created(objects) != Created(objects_)) return false;
  objects_ = objects;
  return true;
}

Result<PrintTemplate> TemplateDesign::Checked() const {
  if (objects_.IsEmpty()) return Failure{QString::fromUtf16(print_text::kNoBoxes)};
  if (IsOutsidePaper(objects_, ids_, paper_, unit_))
    return Failure{QString::fromUtf16(print_text::kOutsidePaper)};
  return PrintTemplate{paper_.Sheet(), objects_, ids_};
}

}  // namespace zqm
