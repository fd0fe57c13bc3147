#include "suchdatei.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QSaveFile>
#include <QStringList>

#include "codepage.h"
#include "suchkriterium.h"

namespace kolvane {

namespace {

bool steuerzeichen(const QString& s) {
  for (QChar c : s)
    if ((c.unicode() < 0x20 && c != u'\t') || c.unicode() == 0x7F) return true;
  return false;
}

bool verknuepfung(const QString& s) {
  for (const QString& v : suchVerknuepfungen())
    if (v == s) return true;
  return false;
}

// A text as one line: line breaks and other control characters become blanks.
QString einzeilig(QString s) {
  for (QChar& c : s)
    if ((c.unicode() < 0x20 && c != u'\t') || c.unicode() == 0x7F) c = u' ';
  return s.left(kSuchdateiZeilenLaenge);
}

}  // namespace

SuchdateiFehler fctSuchdateiAusDaten(const QByteArray& daten, SuchdateiInhalt& inhalt) {
  if (daten.isEmpty()) return SuchdateiFehler::Leer;
  if (daten.size() > kSuchdateiHoechstLaenge) return SuchdateiFehler::ZuLang;
  if (daten.contains('\0')) return SuchdateiFehler::Beschaedigt;
  QStringList zeilen = decodeTextFile(daten).split(u'\n');
  // The writer ends its last line too.
  if (!zeilen.isEmpty() && zeilen.last().isEmpty()) zeilen.removeLast();
  if (zeilen.size() > kSuchdateiZeilen) return SuchdateiFehler::ZuLang;
  if (zeilen.size() < 2) return SuchdateiFehler::Leer;
  SuchdateiInhalt neu;
  for (int z = 0; z < zeilen.size(); ++z) {
    QString& s = zeilen[z];
    if (s.endsWith(u'\r')) s.chop(1);
    if (s.size() > kSuchdateiZeilenLaenge) return SuchdateiFehler::ZuLang;
    if (steuerzeichen(s)) return SuchdateiFehler::Beschaedigt;
    if (z == 0) continue;
    const size_t feld = size_t((z - 1) / 2);
    if (z % 2 == 1) {
      neu.txtBenennung[feld] = s;
    } else {
      if (!s.isEmpty() && !verknuepfung(s)) return SuchdateiFehler::Beschaedigt;
      if (!s.isEmpty()) neu.comboxSuchkriterienVerknuepfen[feld] = s;
    }
  }
  inhalt = neu;
  return SuchdateiFehler::Keiner;
}

SuchdateiFehler fctSuchdateiLesen(const QString& datei, SuchdateiInhalt& inhalt) {
  if (datei.isEmpty() || QFileInfo(datei).isDir()) return SuchdateiFehler::NichtLesbar;
  QFile f(datei);
  if (!f.open(QIODevice::ReadOnly)) return SuchdateiFehler::NichtLesbar;
  const QByteArray daten = f.read(kSuchdateiHoechstLaenge + 1);
  if (f.error() != QFileDevice::NoError) return SuchdateiFehler::NichtLesbar;
  return fctSuchdateiAusDaten(daten, inhalt);
}

QByteArray fctSuchdateiDaten(const SuchdateiInhalt& inhalt, const QString& geschrieben) {
  QStringList zeilen{einzeilig(geschrieben)};
  for (size_t i = 0; i < 10; ++i) {
    zeilen << einzeilig(inhalt.txtBenennung[i]);
    const QString& v = inhalt.comboxSuchkriterienVerknuepfen[i];
    zeilen << (verknuepfung(v) ? v : QStringLiteral("$"));
  }
  const QString text = zeilen.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n");
  // Windows-1252 when every character has a place in it and the reader can't
  // take the bytes for UTF-8.
  const QByteArray alt = toWindows1252(text);
  if (decodeTextFile(alt) == text) return alt;
  return text.toUtf8();
}

bool fctSuchdateiSchreiben(const QString& datei, const SuchdateiInhalt& inhalt, QString* grund) {
  const QByteArray d =
      fctSuchdateiDaten(inhalt, QLocale::system().toString(QDateTime::currentDateTime(), QLocale::ShortFormat));
  QSaveFile f(datei);
  if (!f.open(QIODevice::WriteOnly) || f.write(d) != d.size() || !f.commit()) {
    if (grund) *grund = f.errorString();
    return false;
  }
  return true;
}

}  // namespace kolvane
