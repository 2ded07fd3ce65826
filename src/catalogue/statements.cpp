// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/statements.h"

#include <array>
#include <variant>
#include <vector>

#include "catalogue/database.h"
#include "shell/dates.h"

using namespace Qt::StringLiterals;

namespace zqm {
namespace {

// The engine refuses expressions of more than 1,000 levels and more than some 30 brackets within
// each other; chains are bundled so that both stay far off.
constexpr int kDeepest = 12;       // brackets and NOTs within each other, as written
constexpr int kMostBrackets = 24;  // the same, as handed on
constexpr size_t kBundle = 64;     // terms side by side

// ---- Words -------------------------------------------------------------------------------------

enum class WordKind { Name, Bracketed, Text, Date, Sign, End, Bad };

struct Word {
  WordKind kind = WordKind::End;
  QStringView text;  // of a quoted one, what stands between the quotes, still doubled inside
  qsizetype at = 0;
  QChar quote;
};

bool IsNameCharacter(QChar c) {
  return c.isLetterOrNumber() || c == u'_';
}

// The position of the closing quote of a text that opens at `open`, or -1.
qsizetype ClosingQuote(QStringView statement, qsizetype open) {
  const QChar quote = statement[open];
  for (qsizetype at = open + 1; at < statement.size(); ++at) {
    if (statement[at] != quote) continue;
    if (at + 1 == statement.size() || statement[at + 1] != quote) return at;
    ++at;
  }
  return -1;
}

class Words {
 public:
  explicit Words(QStringView statement) : statement_(statement) { Advance(); }

  const Word& Current() const { return current_; }

  void Advance() {
    while (at_ < statement_.size() && statement_[at_].isSpace())
      ++at_;
    current_ = {WordKind::End, {}, at_, {}};
    if (at_ == statement_.size()) return;
    switch (statement_[at_].unicode()) {
      case u'"':
      case u'\'':
        return Enclosed(WordKind::Text, ClosingQuote(statement_, at_));
      case u'[':
        return Enclosed(WordKind::Bracketed, statement_.indexOf(u']', at_ + 1));
      case u'#':
        return Enclosed(WordKind::Date, statement_.indexOf(u'#', at_ + 1));
      default:
        break;
    }
    if (IsNameCharacter(statement_[at_])) {
      qsizetype end = at_;
      while (end < statement_.size() && IsNameCharacter(statement_[end]))
        ++end;
      return Take(WordKind::Name, end - at_);
    }
    static constexpr std::array<QStringView, 3> kPairs{u"<>", u"<=", u">="};
    const QStringView two = statement_.mid(at_, 2);
    Take(WordKind::Sign, std::ranges::find(kPairs, two) != kPairs.end() ? 2 : 1);
  }

 private:
  void Take(WordKind kind, qsizetype length) {
    current_ = {kind, statement_.mid(at_, length), at_, {}};
    at_ += length;
  }

  void Enclosed(WordKind kind, qsizetype close) {
    if (close < 0) return Take(WordKind::Bad, statement_.size() - at_);
    current_ = {kind, statement_.mid(at_ + 1, close - at_ - 1), at_, statement_[at_]};
    at_ = close + 1;
  }

  QStringView statement_;
  qsizetype at_ = 0;
  Word current_;
};

// ---- Conditions --------------------------------------------------------------------------------

struct Condition {
  enum class Kind { Test, Not, And, Or } kind = Kind::Test;
  std::vector<Condition> parts;  // of all but a test
  std::string sql;               // of a test
  std::string column, equalTo;   // of a test for one text, so that several become one list
};

Condition Opposite(Condition condition) {
  Condition opposite;
  opposite.kind = Condition::Kind::Not;
  opposite.parts.push_back(std::move(condition));
  return opposite;
}

struct Fault {
  QString reason;
};

using ConditionOrFault = std::variant<Condition, Fault>;

class Parser {
 public:
  explicit Parser(QStringView statement) : words_(statement) {}

  Result<std::string> Statement(Column bound);

 private:
  struct Literal {
    std::string sql;
    bool date = false;
  };

  bool Keyword(QStringView word) {
    const Word& current = words_.Current();
    if (current.kind != WordKind::Name || current.text.compare(word, Qt::CaseInsensitive) != 0)
      return false;
    words_.Advance();
    return true;
  }

  bool Sign(QStringView sign) {
    if (words_.Current().kind != WordKind::Sign || words_.Current().text != sign) return false;
    words_.Advance();
    return true;
  }

  Fault Expected(const QString& what) const {
    return {u"Syntax error at character %1: %2 expected"_s.arg(words_.Current().at + 1).arg(what)};
  }

  bool Selection(Column bound, Fault& fault);
  std::optional<Column> ColumnWord(Fault& fault);
  std::optional<Literal> LiteralWord(Fault& fault);
  ConditionOrFault Chain(Condition::Kind kind, int depth);
  ConditionOrFault Term(int depth);
  ConditionOrFault Test();
  ConditionOrFault Compared(Column column, const std::string& comparison);
  ConditionOrFault Like(Column column);
  ConditionOrFault Between(Column column);

  Words words_;
};

// A date that is missing is no date: it is neither before nor after any other.
std::string Operand(Column column, bool asDate) {
  const std::string name = QuotedName(ColumnName(column));
  if (asDate) return "nullif(" + name + ", '')";
  return column == Column::ID ? "CAST(ID AS TEXT)" : name;
}

std::string TextOf(const Word& word) {
  const QString quote(word.quote);
  return QuotedText(word.text.toString().replace(quote + quote, quote));
}

std::optional<Column> Parser::ColumnWord(Fault& fault) {
  const Word word = words_.Current();
  if (word.kind == WordKind::Name || word.kind == WordKind::Bracketed) {
    if (const auto column = ColumnByName(word.text)) {
      words_.Advance();
      return column;
    }
  }
  fault = Expected(u"a column"_s);
  return std::nullopt;
}

std::optional<Parser::Literal> Parser::LiteralWord(Fault& fault) {
  const Word word = words_.Current();
  if (word.kind == WordKind::Text && !word.text.contains(QChar(u'\0'))) {
    words_.Advance();
    return Literal{TextOf(word), false};
  }
  if (word.kind == WordKind::Date) {
    if (const auto iso = DateLiteralToIso(word.text)) {
      words_.Advance();
      return Literal{QuotedText(*iso), true};
    }
    fault = Expected(u"a valid date"_s);
    return std::nullopt;
  }
  fault = Expected(u"a text or a date"_s);
  return std::nullopt;
}

bool Parser::Selection(Column bound, Fault& fault) {
  if (Sign(u"*")) return true;
  bool named = false;
  do {
    const auto column = ColumnWord(fault);
    if (!column) return false;
    named = named || *column == bound;
  } while (Sign(u","));
  if (!named) fault = {u"The statement does not select the column "_s + ColumnName(bound)};
  return named;
}

ConditionOrFault Parser::Chain(Condition::Kind kind, int depth) {
  Condition chain;
  chain.kind = kind;
  do {
    auto part = kind == Condition::Kind::Or ? Chain(Condition::Kind::And, depth) : Term(depth);
    if (std::holds_alternative<Fault>(part)) return part;
    chain.parts.push_back(std::get<Condition>(std::move(part)));
  } while (Keyword(kind == Condition::Kind::Or ? u"OR" : u"AND"));
  if (chain.parts.size() > 1) return chain;
  Condition only = std::move(chain.parts.front());
  return only;
}

ConditionOrFault Parser::Term(int depth) {
  if (depth > kDeepest) return Expected(u"fewer nested parentheses"_s);
  if (Keyword(u"NOT")) {
    auto part = Term(depth + 1);
    if (std::holds_alternative<Fault>(part)) return part;
    return Opposite(std::get<Condition>(std::move(part)));
  }
  if (!Sign(u"(")) return Test();
  auto inner = Chain(Condition::Kind::Or, depth + 1);
  if (std::holds_alternative<Condition>(inner) && !Sign(u")")) return Expected(u"\")\""_s);
  return inner;
}

ConditionOrFault Parser::Test() {
  Fault fault;
  const auto column = ColumnWord(fault);
  if (!column) return fault;
  if (*column == Column::Thumbnail) return Fault{u"The column Thumbnail can't be compared"_s};
  for (const QStringView sign : {u"=", u"<>", u"<=", u">=", u"<", u">"})
    if (Sign(sign)) return Compared(*column, sign.toUtf8().toStdString());

  const bool negated = Keyword(u"NOT");
  ConditionOrFault test = Keyword(u"LIKE")      ? Like(*column)
                          : Keyword(u"BETWEEN") ? Between(*column)
                                                : ConditionOrFault(Expected(u"a comparison"_s));
  if (!negated || std::holds_alternative<Fault>(test)) return test;
  return Opposite(std::get<Condition>(std::move(test)));
}

ConditionOrFault Parser::Compared(Column column, const std::string& comparison) {
  Fault fault;
  const auto literal = LiteralWord(fault);
  if (!literal) return fault;
  if (literal->date && column != Column::Date) return Fault{u"Only the column Date holds dates"_s};
  const std::string operand = Operand(column, literal->date);
  Condition test;
  test.sql = operand + " " + comparison + " " + literal->sql + " COLLATE FOLDED";
  if (comparison == "=") {
    test.column = operand;
    test.equalTo = literal->sql;
  }
  return test;
}

ConditionOrFault Parser::Like(Column column) {
  Fault fault;
  const auto pattern = LiteralWord(fault);
  if (!pattern) return fault;
  if (pattern->date) return Fault{u"A pattern must be a text"_s};
  Condition test;
  test.sql = Operand(column, false) + " LIKE " + pattern->sql;
  return test;
}

ConditionOrFault Parser::Between(Column column) {
  Fault fault;
  auto from = LiteralWord(fault);
  if (!from) return fault;
  if (!Keyword(u"AND")) return Expected(u"AND"_s);
  auto to = LiteralWord(fault);
  if (!to) return fault;
  if (from->date != to->date || (from->date && column != Column::Date))
    return Fault{u"Only the column Date holds dates"_s};
  // The days between two others are the same from either side.
  if (from->date && to->sql < from->sql) std::swap(*from, *to);
  Condition test;
  test.sql =
      Operand(column, from->date) + " COLLATE FOLDED BETWEEN " + from->sql + " AND " + to->sql;
  return test;
}

// ---- The engine's text -------------------------------------------------------------------------

struct Emitted {
  std::string sql;
  int brackets = 0;  // within each other
};

// `column = a OR column = b …` as `column IN (a, b, …)`; other parts stay.
std::vector<Emitted> EmitParts(const Condition& condition);

Emitted Joined(std::span<const Emitted> parts, std::string_view joiner) {
  Emitted joined;
  for (const Emitted& part : parts) {
    if (!joined.sql.empty()) joined.sql += joiner;
    joined.sql += part.sql;
    joined.brackets = std::max(joined.brackets, part.brackets);
  }
  return joined;
}

Emitted InBrackets(Emitted emitted) {
  emitted.sql.insert(0, 1, '(');
  emitted.sql.push_back(')');
  ++emitted.brackets;
  return emitted;
}

Emitted Emit(const Condition& condition) {
  if (condition.kind == Condition::Kind::Test) return {condition.sql};
  std::vector<Emitted> parts = EmitParts(condition);
  if (condition.kind == Condition::Kind::Not) {
    parts.front().sql.insert(0, "NOT ");
    return InBrackets(std::move(parts.front()));
  }
  const std::string_view joiner = condition.kind == Condition::Kind::And ? " AND " : " OR ";
  while (parts.size() > kBundle) {
    std::vector<Emitted> bundles;
    for (size_t at = 0; at < parts.size(); at += kBundle) {
      const size_t count = std::min(kBundle, parts.size() - at);
      bundles.push_back(InBrackets(Joined(std::span(parts).subspan(at, count), joiner)));
    }
    parts = std::move(bundles);
  }
  return InBrackets(Joined(parts, joiner));
}

std::vector<Emitted> EmitParts(const Condition& condition) {
  std::vector<Emitted> emitted;
  const auto& parts = condition.parts;
  for (size_t at = 0; at < parts.size();) {
    size_t end = at;
    std::string list;
    while (condition.kind == Condition::Kind::Or && end < parts.size() &&
           !parts[end].column.empty() && parts[end].column == parts[at].column) {
      list += (list.empty() ? "" : ", ") + parts[end++].equalTo;
    }
    if (end - at > 1) {
      Emitted any = InBrackets({std::move(list)});
      any.sql.insert(0, parts[at].column + " COLLATE FOLDED IN ");
      emitted.push_back(std::move(any));
      at = end;
    } else {
      emitted.push_back(Emit(parts[at++]));
    }
  }
  return emitted;
}

Result<std::string> Parser::Statement(Column bound) {
  Fault fault;
  if (bound == Column::Thumbnail) return Failure{u"The column Thumbnail can't be selected"_s};
  if (!Keyword(u"SELECT")) return Failure{Expected(u"SELECT"_s).reason};
  if (!Selection(bound, fault)) return Failure{fault.reason};
  if (!Keyword(u"FROM")) return Failure{Expected(u"FROM"_s).reason};
  if (!Keyword(u"qryphoto")) return Failure{Expected(u"qryphoto"_s).reason};

  std::string sql = "SELECT " + QuotedName(ColumnName(bound)) + " FROM qryphoto";
  if (Keyword(u"WHERE")) {
    const auto condition = Chain(Condition::Kind::Or, 0);
    if (const auto* wrong = std::get_if<Fault>(&condition)) return Failure{wrong->reason};
    const Emitted emitted = Emit(std::get<Condition>(condition));
    if (emitted.brackets > kMostBrackets) return Failure{u"The statement is nested too deeply"_s};
    sql += " WHERE " + emitted.sql;
  }
  if (words_.Current().kind != WordKind::End)
    return Failure{Expected(u"the end of the statement"_s).reason};
  return sql + " ORDER BY ID";
}

}  // namespace

Result<std::string> TranslateStatement(QStringView statement, Column bound) {
  return Parser(statement).Statement(bound);
}

std::optional<QString> DateLiteralToIso(QStringView text) {
  const auto date = ParseDate(text, DateOrder::MonthFirst);
  if (!date) return std::nullopt;
  return date->date().toString(Qt::ISODate);
}

}  // namespace zqm
