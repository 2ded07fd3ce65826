// SPDX-License-Identifier: GPL-3.0-or-later
// Comparing texts as the catalogue does: letter case never counts, in no script.
#pragma once

#include <QString>
#include <QStringView>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zqm {

/// Every character case-folded one to one (Unicode simple case folding), so that lengths stay.
QString FoldCase(QStringView text);

/// What comparing and hashing `FoldCase` of the texts would say, without making it.
bool EqualFolded(QStringView left, QStringView right);
size_t HashFolded(QStringView text, size_t seed = 0);

/// Order of two UTF-8 texts by their folded characters: below 0, 0, above 0. Total for any bytes.
int CompareFolded(std::string_view left, std::string_view right);

/// A pattern of `LIKE`, read once and matched against many texts. The grammar stands at
/// `LikeMatches`. Matching takes at most the product of both lengths.
class LikePattern {
 public:
  explicit LikePattern(QStringView pattern);

  bool Matches(QStringView text) const;
  /// Bytes that aren't UTF-8 count as one character each, which no literal matches.
  bool MatchesUtf8(std::string_view text) const;

 private:
  enum class Kind { Literal, AnyOne, AnyRun, Class };
  struct Token {
    Kind kind;
    char32_t character = 0;  ///< folded, of a literal
    size_t set = 0;          ///< into `sets_`, of a class
  };
  struct Set {
    bool complement = false;
    std::vector<std::pair<char32_t, char32_t>> ranges;  ///< folded, both ends within
  };

  size_t ReadClass(const std::u32string& pattern, size_t open);
  void FindNeedle();
  bool Accepts(const Token& token, char32_t folded) const;
  template <class Reader>
  bool Run(const Reader& reader) const;

  std::vector<Token> tokens_;
  std::vector<Set> sets_;
  /// Of the commonest pattern, "%word%": the folded word if it is ASCII, else "" and `foreign_`.
  std::optional<std::string> needle_;
  bool foreign_ = false;
};

}  // namespace zqm
