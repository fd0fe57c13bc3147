#include "textcompare.h"

namespace kolvane {

namespace {

inline char16_t fold(QChar c) {
  const char16_t u = c.unicode();
  if (u < 0x80) return u >= u'A' && u <= u'Z' ? char16_t(u + 32) : u;
  return QChar::toCaseFolded(u);
}

inline char32_t fold32(char32_t c) {
  if (c < 0x80) return c >= U'A' && c <= U'Z' ? c + 32 : c;
  return QChar::toCaseFolded(c);
}

// The code point at byte i; i moves past it.
inline char32_t utf8At(const unsigned char* s, int n, int& i) {
  const unsigned c = s[i];
  if (c < 0x80) {
    ++i;
    return c;
  }
  const int len = c >= 0xF0 ? 4 : c >= 0xE0 ? 3 : c >= 0xC0 ? 2 : 0;
  if (len == 0 || i + len > n) {
    ++i;
    return 0xFFFD;
  }
  char32_t cp = c & (0x7F >> len);
  for (int k = 1; k < len; ++k) {
    const unsigned f = s[i + k];
    if ((f & 0xC0) != 0x80) {
      ++i;
      return 0xFFFD;
    }
    cp = (cp << 6) | (f & 0x3F);
  }
  i += len;
  return cp;
}

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

bool likeMatchUtf8(const unsigned char* text, int n, const unsigned char* pattern, int m, char32_t escape) {
  // The matcher above, over code points decoded where they stand.
  int t = 0, p = 0;
  int starP = -1, starT = 0;
  while (t < n) {
    if (p < m) {
      int p1 = p;
      const char32_t pc = utf8At(pattern, m, p1);
      int t1 = t;
      if (escape != 0 && pc == escape && p1 < m) {
        int p2 = p1;
        const char32_t lit = utf8At(pattern, m, p2);
        if (fold32(lit) == fold32(utf8At(text, n, t1))) {
          p = p2;
          t = t1;
          continue;
        }
      } else if (pc == U'%') {
        starP = p;
        p = p1;
        starT = t;
        continue;
      } else if (const char32_t tc = utf8At(text, n, t1); pc == U'_' || fold32(pc) == fold32(tc)) {
        p = p1;
        t = t1;
        continue;
      }
    }
    if (starP < 0) return false;
    p = starP + 1;  // "%" is one byte
    utf8At(text, n, starT);
    t = starT;
  }
  while (p < m && pattern[p] == '%') ++p;
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
