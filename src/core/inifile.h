#pragma once
#include <QString>
#include <QStringList>
#include <cstdint>

namespace kolvane {

// Private-profile ini files with the semantics of the Windows calls: sections
// and keys compare without case, values are trimmed (one pair of surrounding
// quotes is removed), a missing key reads as "", and the file with its folder is
// created on the first write. Lines that are neither a section nor "key=value"
// are kept as they stand and otherwise ignored. Values are read whole.

QString IniGetValue(const QString& datei, const QString& sektion, const QString& schluessel);
// The value as a number; empty or not numeric gives 0.
int16_t fctIniInteger(const QString& datei, const QString& sektion, const QString& schluessel);
// The value when it is a number from 0 to 255, else 0.
uint8_t fctIniByte(const QString& datei, const QString& sektion, const QString& schluessel);
// Writes one value; false when the file can't be written.
bool IniSetValue(const QString& datei, const QString& sektion, const QString& schluessel,
                 const QString& wert);
// Removes one key (the private-profile call with a null value).
bool IniDeleteKey(const QString& datei, const QString& sektion, const QString& schluessel);
// Removes the whole section.
bool subIniSektionLoeschen(const QString& datei, const QString& sektion);
// Counts the keys praefix1, praefix2, ... up to the first empty value.
int16_t fctAnzahlIniEintraege(const QString& datei, const QString& sektion,
                              const QString& praefix);
// Unless ohneLoeschen, clears the section first; then one key per element,
// praefix + index (from 0).
void subAryInIniSpeichern(const QStringList& ary, const QString& datei, const QString& sektion,
                          const QString& praefix, bool ohneLoeschen);
// All keys of a section, in file order (as written in the file).
QStringList fctIniSchluessel(const QString& datei, const QString& sektion);

// A parsed ini file for repeated look-ups (the label cache).
class IniData {
 public:
  static IniData load(const QString& datei);
  bool exists() const { return exists_; }
  QString value(const QString& sektion, const QString& schluessel) const;
  QStringList keys(const QString& sektion) const;

 private:
  struct Entry {
    QString section;  // lower case
    QString key;      // lower case
    QString keyAsWritten;
    QString value;
  };
  bool exists_ = false;
  QList<Entry> entries_;
};

}  // namespace kolvane
