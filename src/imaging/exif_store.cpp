// SPDX-License-Identifier: GPL-3.0-or-later
#include "imaging/exif_store.h"

#include <QStringConverter>
#include <array>
#include <charconv>
#include <exiv2/exiv2.hpp>
#include <mutex>
#include <set>
#include <unordered_map>

#include "imaging/fraction.h"
#include "shell/text.h"

namespace zqm {
namespace {

std::mutex xmpMutex;

void LockXmp(void*, bool lock) {
  lock ? xmpMutex.lock() : xmpMutex.unlock();
}

void InitialiseOnce() {
  static std::once_flag once;
  std::call_once(once, [] {
    Exiv2::LogMsg::setLevel(Exiv2::LogMsg::mute);
    Exiv2::XmpParser::initialize(LockXmp, nullptr);
  });
}

constexpr std::array<const char*, 3> kGroupNames{"Image", "Photo", "GPSInfo"};

std::uint32_t IndexKey(std::size_t group, int tag) {
  return static_cast<std::uint32_t>(group) << 16 | static_cast<std::uint32_t>(tag);
}

std::uint32_t IndexKey(ExifTag tag) {
  return IndexKey(static_cast<std::size_t>(tag.group), tag.number);
}

Exiv2::ExifKey LibraryKey(ExifTag tag) {
  return Exiv2::ExifKey(static_cast<std::uint16_t>(tag.number),
                        kGroupNames[static_cast<std::size_t>(tag.group)]);
}

/// Tags of the main directory that say something about the photo, pointers to the Exif and GPS
/// directories included; the others there describe how a TIFF file is laid out.
constexpr std::array kDescriptiveTags{0x8769, 0x8825, 0x010E, 0x010F, 0x0110,
                                      0x0131, 0x0132, 0x013B, 0x013C, 0x8298,
                                      0x9C9B, 0x9C9C, 0x9C9D, 0x9C9E, 0x9C9F};

/// Those that go along into another file: with the density and the orientation of the pixels.
bool GoesAlong(int tag) {
  constexpr std::array kFurther{0x0112, 0x011A, 0x011B, 0x0128, 0x4746, 0x4749};
  return IsDescriptiveTag(tag) || std::ranges::find(kFurther, tag) != kFurther.end();
}

/// Shortest for the width of the number: 2.1F is "2.1" too.
template <class Number>
QString ShortestDecimal(Number value) {
  if (!std::isfinite(value) || value == 0) return QStringLiteral("0");
  std::array<char, 512> buffer;
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
  return QString::fromLatin1(buffer.data(), end.ptr - buffer.data());
}

QByteArray RawBytes(const Exiv2::Value& value) {
  QByteArray bytes(static_cast<qsizetype>(value.size()), Qt::Uninitialized);
  value.copy(reinterpret_cast<Exiv2::byte*>(bytes.data()), Exiv2::littleEndian);
  return bytes;
}

QString NumberOf(const Exiv2::Value& value, long index) {
  switch (value.typeId()) {
    case Exiv2::unsignedRational:
    case Exiv2::signedRational:
      break;
    case Exiv2::tiffFloat:
      return ShortestDecimal(value.toFloat(index));
    case Exiv2::tiffDouble:
      return ShortestDecimal(dynamic_cast<const Exiv2::DoubleValue&>(value).value_.at(
          static_cast<std::size_t>(index)));
    case Exiv2::undefined:
      // A code in one byte, as some writers store it.
      if (value.size() == 1) return QString::number(value.toLong(0));
      [[fallthrough]];
    case Exiv2::asciiString:
    case Exiv2::comment:
      return index == 0 ? FromUtf8OrLatin1(RawBytes(value)) : QString();
    default:
      return QString::number(value.toLong(index));
  }
  if (const auto* rationals = dynamic_cast<const Exiv2::URationalValue*>(&value)) {
    const auto [top, bottom] = rationals->value_.at(static_cast<std::size_t>(index));
    return bottom == 0 ? QStringLiteral("0") : ShortestDecimal(double(top) / double(bottom));
  }
  const auto [top, bottom] = value.toRational(index);
  return bottom == 0 ? QStringLiteral("0") : ShortestDecimal(double(top) / double(bottom));
}

/// What was read before the file turned out broken stays: a bad profile or a cut picture behind
/// good tags is no reason to lose them.
void ReadWhatIsWhole(Exiv2::Image& image) {
  try {
    image.readMetadata();
  } catch (const std::exception&) {
  }
}

bool HoldsText(Exiv2::TypeId type) {
  return type == Exiv2::asciiString || type == Exiv2::unsignedByte || type == Exiv2::undefined ||
         type == Exiv2::comment;
}

QString UpToNul(QByteArray bytes) {
  if (const qsizetype end = bytes.indexOf('\0'); end >= 0) bytes.truncate(end);
  return FromUtf8OrLatin1(bytes);
}

// The library converts what is Unicode by a charset without surrogates, so that is done here.
constexpr std::string_view kUnicodeMark("UNICODE\0", 8), kAsciiMark("ASCII\0\0\0", 8);

QByteArray CommentBytes(const QString& text) {
  const bool ascii = std::ranges::all_of(text, [](QChar c) { return c.unicode() < 0x80; });
  const std::string_view mark = ascii ? kAsciiMark : kUnicodeMark;
  QByteArray bytes(mark.data(), static_cast<qsizetype>(mark.size()));
  if (ascii) return bytes + text.toLatin1();
  QStringEncoder encoder(QStringConverter::Utf16LE);
  return bytes + QByteArray(encoder(text));
}

bool IsUnicode(const Exiv2::CommentValue& comment) {
  return comment.value_.starts_with(kUnicodeMark);
}

QString FromUnicode(const Exiv2::CommentValue& comment) {
  const QByteArray units = QByteArray::fromStdString(comment.value_).sliced(kUnicodeMark.size());
  QStringDecoder decoder(comment.byteOrder_ == Exiv2::bigEndian ? QStringConverter::Utf16BE
                                                                : QStringConverter::Utf16LE);
  const QString text = decoder(units);
  return text.left(text.indexOf(QChar::Null));
}

/// As the block of that byte order holds it.
QByteArray StoredComment(const Exiv2::CommentValue& comment, bool bigEndian) {
  QByteArray bytes = QByteArray::fromStdString(comment.value_);
  if (!IsUnicode(comment) || (comment.byteOrder_ == Exiv2::bigEndian) == bigEndian) return bytes;
  for (qsizetype i = std::ssize(kUnicodeMark); i + 1 < bytes.size(); i += 2)
    std::swap(bytes[i], bytes[i + 1]);
  return bytes;
}

QString FromJis(const QByteArray& bytes) {
  QStringDecoder decoder("ISO-2022-JP");
  if (!decoder.isValid()) return QString();
  const QString text = decoder(bytes);
  return decoder.hasError() ? QString() : text.left(text.indexOf(QChar::Null));
}

constexpr std::uint16_t kMakerNote = 0x927C;
/// Leaves room in a JPEG segment for a thumbnail.
constexpr qsizetype kMostExifBytes = 48 << 10;

QByteArray Encode(Exiv2::ExifData exif) {
  if (exif.empty()) return QByteArray();
  Exiv2::Blob blob;
  try {
    Exiv2::ExifParser::encode(blob, Exiv2::littleEndian, exif);
  } catch (const std::exception&) {
    return QByteArray();  // values that the library read but can't write
  }
  return QByteArray(reinterpret_cast<const char*>(blob.data()),
                    static_cast<qsizetype>(blob.size()));
}

}  // namespace

bool IsDescriptiveTag(int number) {
  return std::ranges::find(kDescriptiveTags, number) != kDescriptiveTags.end();
}

struct ExifStore::Data {
  Exiv2::ExifData exif;
  QByteArray xmp;
  QByteArray iptc;
  QByteArray profile;
  std::set<ExifTag> changed;
  bool cleared = false;
  std::unordered_map<std::uint32_t, const Exiv2::Exifdatum*> index;

  Data() = default;
  Data(const Data& other)
      : exif(other.exif),
        xmp(other.xmp),
        iptc(other.iptc),
        profile(other.profile),
        changed(other.changed),
        cleared(other.cleared) {
    Reindex();
  }
  Data& operator=(const Data&) = delete;

  // The library looks a key up by comparing texts along the whole list; a reader asks for a
  // hundred.
  void Reindex() {
    index.clear();
    for (const Exiv2::Exifdatum& datum : exif) {
      const std::string group = datum.groupName();
      const auto known = std::ranges::find(kGroupNames, group);
      if (known == kGroupNames.end()) continue;
      index.emplace(IndexKey(static_cast<std::size_t>(known - kGroupNames.begin()), datum.tag()),
                    &datum);
    }
  }

  const Exiv2::Value* Find(ExifTag tag) const {
    const auto found = index.find(IndexKey(tag));
    if (found == index.end() || found->second->count() == 0) return nullptr;
    return &found->second->value();
  }
};

ExifStore::ExifStore() : data_(std::make_shared<Data>()) {}

ExifStore ExifStore::Read(ByteView file) {
  InitialiseOnce();
  ExifStore store;
  try {
    const auto image = Exiv2::ImageFactory::open(file.data(), static_cast<long>(file.size()));
    if (image.get() == nullptr) return store;
    ReadWhatIsWhole(*image);
    store.data_->exif = image->exifData();
    const std::string& packet = image->xmpPacket();
    store.data_->xmp = QByteArray(packet.data(), static_cast<qsizetype>(packet.size()));
    if (!image->iptcData().empty()) {
      const Exiv2::DataBuf block = Exiv2::IptcParser::encode(image->iptcData());
      store.data_->iptc = QByteArray(reinterpret_cast<const char*>(block.pData_), block.size_);
    }
    if (image->iccProfileDefined()) {
      const Exiv2::DataBuf& profile = *image->iccProfile();
      store.data_->profile = QByteArray(reinterpret_cast<const char*>(profile.pData_),
                                        static_cast<qsizetype>(profile.size_));
    }
    store.data_->Reindex();
  } catch (const std::exception&) {
    // Broken or unknown metadata is no reason to refuse a picture: it just has none.
    return ExifStore();
  }
  return store;
}

bool ExifStore::Empty() const {
  return data_->exif.empty();
}

bool ExifStore::HasDescriptiveTag() const {
  return std::ranges::any_of(data_->index, [](const auto& entry) {
    const auto group = static_cast<ExifGroup>(entry.first >> 16);
    return group != ExifGroup::Image || IsDescriptiveTag(static_cast<int>(entry.first & 0xFFFF));
  });
}

QString ExifStore::Text(ExifTag tag) const {
  const Exiv2::Value* value = data_->Find(tag);
  if (value == nullptr) return QString();
  return HoldsText(value->typeId()) ? UpToNul(RawBytes(*value))
                                    : QString::fromStdString(value->toString());
}

QString ExifStore::Comment(ExifTag tag) const {
  const Exiv2::Value* value = data_->Find(tag);
  if (value == nullptr) return QString();
  const auto* comment = dynamic_cast<const Exiv2::CommentValue*>(value);
  if (comment == nullptr) return Text(tag);
  if (IsUnicode(*comment)) return FromUnicode(*comment);
  try {
    const QByteArray text = QByteArray::fromStdString(comment->comment());
    return comment->charsetId() == Exiv2::CommentValue::jis ? FromJis(text) : UpToNul(text);
  } catch (const std::exception&) {
    return QString();
  }
}

std::optional<QString> ExifStore::Number(ExifTag tag, int index) const {
  const Exiv2::Value* value = data_->Find(tag);
  if (value == nullptr || index >= value->count()) return std::nullopt;
  return NumberOf(*value, index);
}

QString ExifStore::Dotted(ExifTag tag) const {
  const Exiv2::Value* value = data_->Find(tag);
  if (value == nullptr) return QString();
  QStringList parts;
  for (long i = 0; i < value->count(); ++i)
    parts.append(QString::number(value->toLong(i)));
  return parts.join(QLatin1Char('.'));
}

ExifStore::Data& ExifStore::Own() {
  if (data_.use_count() > 1) data_ = std::make_shared<Data>(*data_);
  return *data_;
}

void ExifStore::Set(ExifTag tag, ExifType type, int index, const QString& value) {
  InitialiseOnce();
  Data& data = Own();
  Exiv2::Exifdatum& datum = data.exif[LibraryKey(tag).key()];
  const auto at = static_cast<std::size_t>(index);
  const auto setComponent = [&](auto fresh, auto component) {
    using List = decltype(fresh);
    if (const auto* old = datum.count() > 0 ? dynamic_cast<const List*>(&datum.value()) : nullptr)
      fresh.value_ = old->value_;
    fresh.value_.resize(std::max(fresh.value_.size(), at + 1), decltype(component){});
    fresh.value_[at] = component;
    datum.setValue(&fresh);
  };
  switch (type) {
    case ExifType::Ascii:
      datum.setValue(value.toStdString());
      break;
    case ExifType::Comment: {
      const QByteArray bytes = CommentBytes(value);
      Exiv2::CommentValue comment;
      comment.read(reinterpret_cast<const Exiv2::byte*>(bytes.constData()),
                   static_cast<long>(bytes.size()), Exiv2::littleEndian);
      datum.setValue(&comment);
      break;
    }
    case ExifType::Byte: {
      Exiv2::DataValue bytes(Exiv2::unsignedByte);
      QStringList numbers;
      for (const QString& part : value.split(QLatin1Char('.')))
        numbers.append(QString::number(static_cast<int>(Val(part)) & 0xFF));
      bytes.read(numbers.join(QLatin1Char(' ')).toStdString());
      datum.setValue(&bytes);
      break;
    }
    case ExifType::Short:
      // More than the tag's usual type holds, as high sensitivities are.
      if (Val(value) > 0xFFFF) {
        setComponent(Exiv2::ULongValue(),
                     static_cast<std::uint32_t>(std::min(Val(value), double{0xFFFFFFFFu})));
        break;
      }
      setComponent(Exiv2::UShortValue(),
                   static_cast<std::uint16_t>(static_cast<std::int64_t>(Val(value)) & 0xFFFF));
      break;
    case ExifType::Rational: {
      const Fraction fraction = SimplestFraction(static_cast<float>(std::abs(Val(value))));
      setComponent(Exiv2::URationalValue(), Exiv2::URational(fraction.top, fraction.bottom));
      break;
    }
    case ExifType::SignedRational: {
      const double number = Val(value);
      const Fraction fraction = SimplestFraction(static_cast<float>(std::abs(number)));
      const auto top = static_cast<std::int32_t>(fraction.top);
      setComponent(
          Exiv2::RationalValue(),
          Exiv2::Rational(number < 0 ? -top : top, static_cast<std::int32_t>(fraction.bottom)));
      break;
    }
  }
  data.changed.insert(tag);
  data.Reindex();
}

std::vector<ExifTag> ExifStore::Changed() const {
  return {data_->changed.begin(), data_->changed.end()};
}

std::optional<TagValue> ExifStore::Value(ExifTag tag, bool bigEndian) const {
  const Exiv2::Value* value = data_->Find(tag);
  if (value == nullptr) return std::nullopt;
  // A comment is bytes without a type of their own to the file.
  if (const auto* comment = dynamic_cast<const Exiv2::CommentValue*>(value)) {
    const QByteArray bytes = StoredComment(*comment, bigEndian);
    return TagValue{Exiv2::undefined, static_cast<std::uint32_t>(bytes.size()), bytes};
  }
  TagValue stored;
  stored.type = static_cast<std::uint16_t>(value->typeId());
  stored.bytes.resize(static_cast<qsizetype>(value->size()));
  const auto written = value->copy(reinterpret_cast<Exiv2::byte*>(stored.bytes.data()),
                                   bigEndian ? Exiv2::bigEndian : Exiv2::littleEndian);
  stored.bytes.resize(static_cast<qsizetype>(written));
  stored.count = static_cast<std::uint32_t>(value->count());
  return stored;
}

void ExifStore::ClearExif() {
  Data& data = Own();
  data.exif.clear();
  data.changed.clear();
  data.cleared = true;
  data.Reindex();
}

bool ExifStore::ExifCleared() const {
  return data_->cleared;
}

QByteArray ExifStore::EncodeExif() const {
  return Encode(data_->exif);
}

QByteArray ExifStore::EncodeForOtherFile() const {
  Exiv2::ExifData along;
  const auto isMaker = [](const Exiv2::Exifdatum& datum) {
    return datum.tag() == kMakerNote || Exiv2::ExifTags::isMakerGroup(datum.groupName());
  };
  for (const Exiv2::Exifdatum& datum : data_->exif) {
    const std::string group = datum.groupName();
    if (group == "Image"
            ? GoesAlong(datum.tag())
            : group == "Photo" || group == "GPSInfo" || group == "Iop" || isMaker(datum))
      along.add(datum);
  }
  const QByteArray block = Encode(along);
  if (block.size() <= kMostExifBytes) return block;
  Exiv2::ExifData plain;
  for (const Exiv2::Exifdatum& datum : along)
    if (!isMaker(datum)) plain.add(datum);
  return Encode(plain);
}

const QByteArray& ExifStore::Profile() const {
  return data_->profile;
}

const QByteArray& ExifStore::XmpPacket() const {
  return data_->xmp;
}
void ExifStore::SetXmpPacket(const QByteArray& packet) {
  Own().xmp = packet;
}
const QByteArray& ExifStore::IptcBlock() const {
  return data_->iptc;
}

}  // namespace zqm
