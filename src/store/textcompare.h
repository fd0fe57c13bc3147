#pragma once
#include <QString>
#include <QStringView>

namespace kolvane {

// Text comparison of the library: every letter compares without regard to
// case, as the old database did. The SQL functions of a connection, Find and
// Filter of a Recordset all use these, so a query and a search agree.

// Wildcards of a pattern. SQL LIKE knows "%" and "_"; Find and Filter also take
// "*" for any run of characters.
enum class LikeWildcards { Sql, Ado };

// Whether text matches pattern; escape (when not null) makes the next pattern
// character literal.
bool likeMatch(QStringView text, QStringView pattern, LikeWildcards wildcards,
               QChar escape = QChar());

// The same for UTF-8 text and pattern (as a library stores them), without
// converting either; SQL wildcards. Ill-formed bytes compare as U+FFFD.
bool likeMatchUtf8(const unsigned char* text, int textBytes, const unsigned char* pattern,
                   int patternBytes, char32_t escape = 0);

// Case-insensitive order of two texts (negative, 0, positive).
int compareNoCase(QStringView a, QStringView b);
bool equalNoCase(QStringView a, QStringView b);

}  // namespace kolvane
