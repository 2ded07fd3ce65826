// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/like_pattern.h"

#include <QChar>
#include <algorithm>
#include <array>
#include <cstring>

#include "catalogue/statements.h"

namespace zqm {
namespace {

constexpr std::array<unsigned char, 128> AsciiFolds() {
  std::array<unsigned char, 128> folds{};
  for (unsigned char c = 0; c < 128; ++c)
    folds[c] = c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(c + 32) : c;
  return folds;
}
constexpr auto kAsciiFolds = AsciiFolds();

char32_t Fold(char32_t character) {
  return character < 128 ? kAsciiFolds[character] : QChar::toCaseFolded(character);
}

unsigned char ByteAt(std::string_view text, size_t at) {
  return static_cast<unsigned char>(text[at]);
}

struct Utf8Reader {
  std::string_view text;

  size_t Size() const { return text.size(); }

  // A byte that starts no whole character stands for itself as a lone surrogate: no valid text
  // holds one, so it equals nothing but itself.
  char32_t Next(size_t& at) const {
    const unsigned char lead = ByteAt(text, at++);
    if (lead < 0x80) return lead;
    const size_t following = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    const char32_t broken = 0xDC00u + lead;
    if (lead < 0xC2 || lead > 0xF4 || text.size() - at < following) return broken;
    char32_t character = lead & (0x3Fu >> following);
    for (size_t i = 0; i < following; ++i) {
      const unsigned char byte = ByteAt(text, at + i);
      if ((byte & 0xC0) != 0x80) return broken;
      character = character << 6 | (byte & 0x3Fu);
    }
    if (character > 0x10FFFF) return broken;
    at += following;
    return character;
  }
};

struct Utf16Reader {
  QStringView text;

  size_t Size() const { return static_cast<size_t>(text.size()); }

  char32_t Next(size_t& at) const {
    const char16_t unit = text.utf16()[at++];
    if (!QChar::isHighSurrogate(unit) || at == Size()) return unit;
    const char16_t low = text.utf16()[at];
    if (!QChar::isLowSurrogate(low)) return unit;
    ++at;
    return QChar::surrogateToUcs4(unit, low);
  }
};

template <class Reader>
std::u32string Characters(const Reader& reader) {
  std::u32string characters;
  for (size_t at = 0; at < reader.Size();)
    characters.push_back(reader.Next(at));
  return characters;
}

bool IsAscii(std::string_view text) {
  size_t at = 0;
  for (; at + 8 <= text.size(); at += 8) {
    std::uint64_t eight;
    std::memcpy(&eight, text.data() + at, 8);
    if (eight & 0x8080808080808080u) return false;
  }
  for (; at < text.size(); ++at)
    if (ByteAt(text, at) & 0x80) return false;
  return true;
}

// Where the character stands from `at` on, the end if nowhere.
size_t FindByte(std::string_view text, unsigned char character, size_t at) {
  return std::min(text.find(static_cast<char>(character), at), text.size());
}

// Both ASCII, the needle folded. Looking for a byte takes many at once, in the standard library.
bool ContainsFolded(std::string_view text, std::string_view needle) {
  if (needle.empty()) return true;
  if (text.size() < needle.size()) return false;
  const unsigned char lower = ByteAt(needle, 0);
  const bool letter = lower >= 'a' && lower <= 'z';
  const auto upper = static_cast<unsigned char>(letter ? lower - 32 : lower);
  const std::string_view starts = text.substr(0, text.size() - needle.size() + 1);
  size_t small = FindByte(starts, lower, 0);
  size_t capital = letter ? FindByte(starts, upper, 0) : starts.size();
  for (;;) {
    const size_t at = std::min(small, capital);
    if (at == starts.size()) return false;
    size_t same = 1;
    while (same < needle.size() && kAsciiFolds[ByteAt(text, at + same)] == ByteAt(needle, same))
      ++same;
    if (same == needle.size()) return true;
    if (at == small)
      small = FindByte(starts, lower, at + 1);
    else
      capital = FindByte(starts, upper, at + 1);
  }
}

}  // namespace

QString FoldCase(QStringView text) {
  QString folded;
  folded.reserve(text.size());
  const Utf16Reader reader{text};
  for (size_t at = 0; at < reader.Size();) {
    const char32_t character = Fold(reader.Next(at));
    if (QChar::requiresSurrogates(character)) {
      folded += QChar(QChar::highSurrogate(character));
      folded += QChar(QChar::lowSurrogate(character));
    } else {
      folded += QChar(static_cast<char16_t>(character));
    }
  }
  return folded;
}

bool EqualFolded(QStringView left, QStringView right) {
  if (left.size() != right.size()) return false;
  const Utf16Reader first{left}, second{right};
  size_t atFirst = 0, atSecond = 0;
  while (atFirst < first.Size() && atSecond < second.Size())
    if (Fold(first.Next(atFirst)) != Fold(second.Next(atSecond))) return false;
  return atFirst == first.Size() && atSecond == second.Size();
}

size_t HashFolded(QStringView text, size_t seed) {
  // FNV-1a over characters instead of bytes; its constants for 64 bits.
  std::uint64_t hash = 0xcbf29ce484222325u ^ seed;
  const Utf16Reader reader{text};
  for (size_t at = 0; at < reader.Size();)
    hash = (hash ^ Fold(reader.Next(at))) * 0x100000001b3u;
  return static_cast<size_t>(hash ^ hash >> 32);
}

int CompareFolded(std::string_view left, std::string_view right) {
  const Utf8Reader first{left}, second{right};
  size_t atFirst = 0, atSecond = 0;
  while (atFirst < left.size() && atSecond < right.size()) {
    const char32_t a = Fold(first.Next(atFirst));
    const char32_t b = Fold(second.Next(atSecond));
    if (a != b) return a < b ? -1 : 1;
  }
  return static_cast<int>(atFirst < left.size()) - static_cast<int>(atSecond < right.size());
}

LikePattern::LikePattern(QStringView pattern) {
  const std::u32string characters = Characters(Utf16Reader{pattern});
  for (size_t at = 0; at < characters.size();) {
    const char32_t character = characters[at];
    if (character == U'[') {
      if (const size_t end = ReadClass(characters, at)) {
        at = end;
        continue;
      }
    }
    ++at;
    if (character == U'_') {
      tokens_.push_back({Kind::AnyOne});
    } else if (character != U'%') {
      tokens_.push_back({Kind::Literal, Fold(character)});
    } else if (tokens_.empty() || tokens_.back().kind != Kind::AnyRun) {
      tokens_.push_back({Kind::AnyRun});
    }
  }
  FindNeedle();
}

// The position behind the class that opens at `open`, or 0 when nothing closes it.
size_t LikePattern::ReadClass(const std::u32string& pattern, size_t open) {
  const size_t close = pattern.find(U']', open + 1);
  if (close == std::u32string::npos) return 0;
  size_t at = open + 1;
  Set set;
  // A lone "!" is a member: a class of all but nothing would be "_".
  if (close - at > 1 && pattern[at] == U'!') {
    set.complement = true;
    ++at;
  }
  while (at < close) {
    const bool range = close - at > 2 && pattern[at + 1] == U'-';
    set.ranges.emplace_back(Fold(pattern[at]), Fold(pattern[range ? at + 2 : at]));
    at += range ? 3 : 1;
  }
  if (!set.ranges.empty()) {  // "[]" stands for no character at all
    tokens_.push_back({Kind::Class, 0, sets_.size()});
    sets_.push_back(std::move(set));
  }
  return close + 1;
}

void LikePattern::FindNeedle() {
  if (tokens_.size() < 2 || tokens_.front().kind != Kind::AnyRun ||
      tokens_.back().kind != Kind::AnyRun)
    return;
  std::string needle;
  for (size_t i = 1; i + 1 < tokens_.size(); ++i) {
    if (tokens_[i].kind != Kind::Literal) return;
    if (tokens_[i].character < 128)
      needle.push_back(static_cast<char>(tokens_[i].character));
    else
      foreign_ = true;
  }
  needle_ = std::move(needle);
}

bool LikePattern::Accepts(const Token& token, char32_t folded) const {
  switch (token.kind) {
    case Kind::Literal:
      return token.character == folded;
    case Kind::AnyOne:
      return true;
    case Kind::AnyRun:
      return false;
    case Kind::Class:
      break;
  }
  const Set& set = sets_[token.set];
  for (const auto& [from, to] : set.ranges)
    if (from <= folded && folded <= to) return !set.complement;
  return set.complement;
}

// Only the latest "%" is ever tried again: what an earlier one could take, it can take as well.
template <class Reader>
bool LikePattern::Run(const Reader& reader) const {
  size_t at = 0, token = 0;
  size_t resumeAt = 0, resumeToken = 0;
  bool resumable = false;
  while (at < reader.Size()) {
    if (token < tokens_.size() && tokens_[token].kind == Kind::AnyRun) {
      if (++token == tokens_.size()) return true;
      resumable = true;
      resumeAt = at;
      resumeToken = token;
      continue;
    }
    size_t next = at;
    const char32_t folded = Fold(reader.Next(next));
    if (token < tokens_.size() && Accepts(tokens_[token], folded)) {
      at = next;
      ++token;
      continue;
    }
    if (!resumable) return false;
    reader.Next(resumeAt);
    at = resumeAt;
    token = resumeToken;
  }
  while (token < tokens_.size() && tokens_[token].kind == Kind::AnyRun)
    ++token;
  return token == tokens_.size();
}

bool LikePattern::Matches(QStringView text) const {
  return Run(Utf16Reader{text});
}

bool LikePattern::MatchesUtf8(std::string_view text) const {
  // ASCII folds to ASCII only, so that an ASCII text needs no decoding.
  if (needle_ && IsAscii(text)) return !foreign_ && ContainsFolded(text, *needle_);
  return Run(Utf8Reader{text});
}

bool LikeMatches(QStringView text, QStringView pattern) {
  return LikePattern(pattern).Matches(text);
}

}  // namespace zqm
