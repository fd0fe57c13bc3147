#include "labels.h"

#include <QDir>
#include <QFileInfo>

#include "diagnostics.h"
#include "inifile.h"
#include "settings.h"

namespace kolvane {

namespace {

const char* sectionName(LabelSektion s) {
  switch (s) {
    case LabelSektion::Allg: return "Allg";
    case LabelSektion::Gruppe: return "Gruppe";
    case LabelSektion::Speziell: break;
  }
  return "Speziell";
}

// The key rule: numbers below 50 live in "Allg" under their own number.
QString sectionFor(const QString& key, LabelSektion s) {
  bool numeric = false;
  const int nr = key.trimmed().toInt(&numeric);
  if (numeric && nr < 50) return QStringLiteral("Allg");
  return QString::fromLatin1(sectionName(s));
}

QString cacheKey(const QString& section, const QString& key) {
  return section.toLower() + '\n' + key.trimmed().toLower();
}

}  // namespace

Labels& labels() {
  static Labels instance;
  return instance;
}

bool Labels::fctSpracheAuslesen(uint8_t bytNurFrm1Msgbox2) {
  const Settings* s = currentSettings();
  const QString dir = s ? s->labelDir() : QString();
  QString lang = s ? s->strSprache.trimmed() : QString();
  if (lang.isEmpty()) lang = QStringLiteral("deutsch");
  for (int bytAnzahlDurchlauf = 0; bytAnzahlDurchlauf < 2; ++bytAnzahlDurchlauf) {
    strFrmDatei = QDir(dir).filePath("Frm_" + lang + ".txt");
    strMsgboxDatei = QDir(dir).filePath("Msgbox_" + lang + ".txt");
    strTooltipDatei = QDir(dir).filePath("Tooltip_" + lang + ".txt");
    const bool frm = QFileInfo::exists(strFrmDatei);
    const bool msg = QFileInfo::exists(strMsgboxDatei);
    const bool ok = bytNurFrm1Msgbox2 == 1 ? frm : bytNurFrm1Msgbox2 == 2 ? msg : (frm && msg);
    if (ok) {
      language_ = lang;
      return true;
    }
    if (lang == QLatin1String("deutsch")) break;
    lang = QStringLiteral("deutsch");
  }
  return false;
}

Labels::Cache Labels::loadCache(const QString& datei) {
  Cache c;
  const IniData d = IniData::load(datei);
  for (const char* sec : {"Allg", "Gruppe", "Speziell"}) {
    const QString section = QString::fromLatin1(sec);
    for (const QString& k : d.keys(section)) c.insert(cacheKey(section, k), d.value(section, k));
  }
  return c;
}

void Labels::fctBeschriftungsFileZuordnenIni() {
  Trace t(QStringLiteral("fctBeschriftungsFileZuordnenIni"));
  frm_ = loadCache(strFrmDatei);
  msgbox_ = loadCache(strMsgboxDatei);
  tooltip_ = loadCache(strTooltipDatei);
}

QString Labels::lookup(const Cache& cache, const QString& datei, const QString& key,
                       LabelSektion s, bool roh) {
  const QString section = sectionFor(key, s);
  if (roh || cache.isEmpty()) return IniGetValue(datei, section, key.trimmed());
  return cache.value(cacheKey(section, key));
}

QString Labels::fctBeschriftFrmZuordnen(const QString& key, LabelSektion s, bool bytRoh) const {
  return lookup(frm_, strFrmDatei, key, s, bytRoh);
}
QString Labels::fctBeschriftFrmZuordnen(int nr, LabelSektion s, bool bytRoh) const {
  return fctBeschriftFrmZuordnen(QString::number(nr), s, bytRoh);
}
QString Labels::fctBeschriftMsgboxZuordnen(const QString& key, LabelSektion s, bool bytRoh) const {
  return lookup(msgbox_, strMsgboxDatei, key, s, bytRoh);
}
QString Labels::fctBeschriftMsgboxZuordnen(int nr, LabelSektion s, bool bytRoh) const {
  return fctBeschriftMsgboxZuordnen(QString::number(nr), s, bytRoh);
}
QString Labels::tooltip(const QString& key, LabelSektion s) const {
  return lookup(tooltip_, strTooltipDatei, key, s, false);
}

QString Labels::progName() const {
  QString name = fctBeschriftFrmZuordnen(QStringLiteral("ProgName"));
  const Settings* s = currentSettings();
  name.replace('$', s ? s->version() : QStringLiteral("9.0"));
  return name;
}

uint8_t Labels::fctAnzahlSprachen(QStringList& ary, const QString& verzeichnis,
                                  const QString& muster, const QString& endung) {
  ary.clear();
  const QStringList files =
      QDir(verzeichnis).entryList({muster + "*" + endung}, QDir::Files, QDir::Name);
  for (const QString& f : files) {
    const QString lang = f.mid(muster.size(), f.size() - muster.size() - endung.size());
    if (!lang.isEmpty() && !ary.contains(lang)) ary << lang;
  }
  return uint8_t(qMin<qsizetype>(ary.size(), 255));
}

QStringList Labels::subCboSprachenEinlesen(const QString& verzeichnis) {
  QStringList frm;
  fctAnzahlSprachen(frm, verzeichnis);
  QStringList offered;
  for (const QString& lang : frm)
    if (QFileInfo::exists(QDir(verzeichnis).filePath("Msgbox_" + lang + ".txt"))) offered << lang;
  return offered;
}

}  // namespace kolvane
