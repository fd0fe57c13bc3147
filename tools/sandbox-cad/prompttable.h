#pragma once
// The prompts of the sandbox's commands, as data (prompts.tsv beside this
// file): per command its questions in order, their German and English texts,
// the keywords each takes (local and global name, the capitals marking the
// shortest abbreviation), the default, the condition that brings the question
// and where the behaviour comes from. The interpreter asks in the host's
// language and checks keywords by the rules of a real command line.
#include <QList>
#include <QString>
#include <QStringList>

namespace sandbox {

enum class Language { German, English };

struct Keyword {
  QString local;   // German name on a German host ("Ja")
  QString global;  // English name, typed with "_" on any host ("Yes")
};

struct PromptRow {
  QString command;  // the command's global name ("-INSERT")
  QString key;      // the question within the command ("point")
  QString de, en;   // the texts; %1, %2 are filled by the command
  QList<Keyword> keywords;
  QString fallback;   // what Return means, as the table documents it
  QString condition;  // when the question comes ("EXPERT<2", "block defined")
  QString source;     // a page of public documentation, or "assumed: why"
};

class PromptTable {
 public:
  static const PromptTable& instance();
  // Reads the table text; false with the line that is wrong.
  bool parse(const QString& text, QString* error);
  const PromptRow* find(const QString& command, const QString& key) const;
  const QList<PromptRow>& rows() const { return rows_; }

 private:
  QList<PromptRow> rows_;
};

// The keyword a typed word stands for: a word with "_" names a global
// keyword, a word without names a local one (on an English host local names
// are the global ones). A keyword is matched by its whole name, by its
// capitals, or by a beginning at least as long as a leading abbreviation.
// -1 when none or more than one keyword fit.
int matchKeyword(const QString& typed, const QList<Keyword>& keywords, Language language);

// The words of a keyword list "Ja|Yes Nein|No" (a bare word is both names).
QList<Keyword> parseKeywords(const QString& text);

}  // namespace sandbox
