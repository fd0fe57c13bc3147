#pragma once
#include <QHash>
#include <QString>
#include <QStringList>
#include <cstdint>

namespace kolvane {

class Settings;

// Sections of a label file. Numbers below 50 always live in "Allg".
enum class LabelSektion : uint8_t { Speziell = 0, Gruppe = 1, Allg = 2 };

// The label files of one language: captions (Frm_), message texts (Msgbox_) and
// tooltips (Tooltip_), in the program directory's label folder. No visible text
// is in the program; a form asks for a label by its number.
class Labels {
 public:
  // Builds the three paths from strSprache ("" is "deutsch"). Flag 1 tests only
  // the Frm file, 2 only the Msgbox file, 0 both. Missing files of another
  // language fall back to "deutsch" once. False when even those are missing.
  bool fctSpracheAuslesen(uint8_t bytNurFrm1Msgbox2 = 0);
  // Loads the cache of all three files.
  void fctBeschriftungsFileZuordnenIni();

  // The key rule: a numeric key below 50 is looked up in "Allg"; other numbers
  // and names in the section given. bytRoh reads the file instead of the cache.
  QString fctBeschriftFrmZuordnen(const QString& key, LabelSektion s = LabelSektion::Speziell,
                                  bool bytRoh = false) const;
  QString fctBeschriftFrmZuordnen(int nr, LabelSektion s = LabelSektion::Speziell,
                                  bool bytRoh = false) const;
  QString fctBeschriftMsgboxZuordnen(const QString& key, LabelSektion s = LabelSektion::Speziell,
                                     bool bytRoh = false) const;
  QString fctBeschriftMsgboxZuordnen(int nr, LabelSektion s = LabelSektion::Speziell,
                                     bool bytRoh = false) const;
  QString tooltip(const QString& key, LabelSektion s = LabelSektion::Speziell) const;

  // "ProgName" with its "$" replaced by the version.
  QString progName() const;

  QString strFrmDatei;
  QString strMsgboxDatei;
  QString strTooltipDatei;
  QString language() const { return language_; }

  // Lists the languages by their "Frm_" files; returns how many.
  static uint8_t fctAnzahlSprachen(QStringList& ary, const QString& verzeichnis,
                                   const QString& muster = QStringLiteral("Frm_"),
                                   const QString& endung = QStringLiteral(".txt"));
  // The languages offered for choice: those with both a Frm_ and a Msgbox_ file.
  static QStringList subCboSprachenEinlesen(const QString& verzeichnis);

 private:
  using Cache = QHash<QString, QString>;  // "section\nkey" (lower case) -> text
  static Cache loadCache(const QString& datei);
  static QString lookup(const Cache& cache, const QString& datei, const QString& key,
                        LabelSektion s, bool roh);
  QString language_;
  Cache frm_, msgbox_, tooltip_;
};

// The labels in force (loaded at start).
Labels& labels();

}  // namespace kolvane
