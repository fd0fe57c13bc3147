#include "textcompare.h"

namespace kolvane {

namespace {

inline char16_t fold(QChar c) { return QChar::toCaseFolded(c.unicode()); }

}  // namespace

bool likeMatch(QStringView text, QStringView pattern, LikeWildcards wildcards, QChar escape) {
  const bool ado = wildcards == LikeWildcards::Ado;
  const qsizetype n = text.size();
  const qsizetype m = pattern.size();
  qsizetype t = 0, p = 0;
  qsizetype starP = -1, starT = 0;  // where the last run wildcard stood, for backtracking
  while (t < n) {
    if (p < m) {
      const QChar pc = pattern[p];
      if (!escape.isNull() && pc == escape && p + 1 < m) {
        if (fold(pattern[p + 1]) == fold(text[t])) {
          p += 2;
          ++t;
          continue;
        }
      } else if (pc == u'%' || (ado && pc == u'*')) {
        starP = p++;
        starT = t;
        continue;
      } else if (pc == u'_' || fold(pc) == fold(text[t])) {
        ++p;
        ++t;
        continue;
      }
    }
    if (starP < 0) return false;
    p = starP + 1;
    t = ++starT;
  }
  while (p < m && (pattern[p] == u'%' || (ado && pattern[p] == u'*'))) ++p;
  return p == m;
}

int compareNoCase(QStringView a, QStringView b) {
  const qsizetype n = qMin(a.size(), b.size());
  for (qsizetype i = 0; i < n; ++i) {
    const char16_t x = fold(a[i]);
    const char16_t y = fold(b[i]);
    if (x != y) return x < y ? -1 : 1;
  }
  return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

bool equalNoCase(QStringView a, QStringView b) {
  return a.size() == b.size() && compareNoCase(a, b) == 0;
}

}  // namespace kolvane
