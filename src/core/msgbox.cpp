#include "msgbox.h"

#include <QDir>
#include <QStringList>

#include "labels.h"
#include "settings.h"

namespace kolvane {

namespace {

// A line of a box: the message text of the number; -1 is an empty line.
QString line(int nr) { return nr < 0 ? QString() : labels().fctBeschriftMsgboxZuordnen(nr); }

QString title(int nr) { return labels().fctBeschriftFrmZuordnen(nr, LabelSektion::Allg); }

QString lines(const QList<int>& nrs) {
  QStringList out;
  for (int nr : nrs) out << line(nr);
  return out.join('\r');
}

Answer show(const QString& text, int titel, Buttons buttons, Icon icon) {
  MessageRequest r;
  r.text = text;
  r.title = title(titel);
  r.buttons = buttons;
  r.icon = icon;
  return prompt().message(r);
}

void info(const QList<int>& nrs) { show(lines(nrs), kTitelInfo, Buttons::Ok, Icon::Information); }
void hinweis(const QList<int>& nrs) {
  show(lines(nrs), kTitelHinweis, Buttons::Ok, Icon::Exclamation);
}
bool frage(const QList<int>& nrs) {
  return show(lines(nrs), kTitelFrage, Buttons::YesNo, Icon(36)) == Answer::Yes;
}

}  // namespace

void subMsgboxInfoEinzeilig(int nr) { info({nr}); }
void subMsgboxInfoEinzeilig(const QString& text) {
  show(text, kTitelInfo, Buttons::Ok, Icon::Information);
}
void subMsgboxInfoZweizeilig(int nr1, int nr2) { info({nr1, nr2}); }
void subMsgboxInfoZweizeilig2(int nr1, int nr2) { info({nr1, -1, nr2}); }
void subMsgboxInfoDreizeilig(int nr1, int nr2, int nr3) { info({nr1, nr2, nr3}); }
void subMsgboxInfoDreizeilig21(int nr1, int nr2, int nr3) { info({nr1, nr2, -1, nr3}); }
void subMsgboxInfoVierZeilig121(int nr1, int nr2, int nr3, int nr4) {
  info({nr1, -1, nr2, nr3, -1, nr4});
}
void subMsgboxHinweisZweizeilig(int nr1, int nr2) { hinweis({nr1, nr2}); }
void subMsgboxHinweisDreizeilig(int nr1, int nr2, int nr3) { hinweis({nr1, nr2, nr3}); }
bool fctMsgboxFrageEinzeilig(int nr) { return frage({nr}); }
bool fctMsgboxFrageZweizeilig(int nr1, int nr2) { return frage({nr1, nr2}); }
bool fctMsgboxFrageZweizeilig2(int nr1, int nr2) { return frage({nr1, -1, nr2}); }
Answer fctMsgboxFrageDreizeilig12(int nr1, int nr2, int nr3) {
  return show(lines({nr1, -1, nr2, nr3}), kTitelFrage, Buttons::YesNoCancel, Icon(36));
}

Answer fctMsgboxAnzeigen(const QList<int>& zeilen, int titel, Buttons buttons, Icon icon) {
  return show(lines(zeilen), titel, buttons, icon);
}

Answer fctmsgboxMitChkAnzeigen(const QString& schluessel, const QString& text,
                               const QString& titel, Buttons buttons) {
  Settings* s = currentSettings();
  if (s && s->fctMsgboxNichtMehrAnzeigen(schluessel)) return Answer::Ok;
  MessageRequest r;
  r.text = text;
  r.title = titel;
  r.buttons = buttons;
  r.icon = Icon::Information;
  bool checked = false;
  const Answer a = prompt().messageWithCheck(
      r, labels().fctBeschriftFrmZuordnen(QStringLiteral("frmMsgboxMitChk.chkNichtMehrAnzeigen")),
      &checked);
  if (checked && s) s->fctMsgboxNichtMehrAnzeigenSpeichern(schluessel);
  return a;
}

std::optional<QString> fctInputBoxAnzeigen(const QString& text, const QString& titel,
                                           const QString& vorgabe) {
  return prompt().input(text, titel, vorgabe);
}

PickResult fctAuswahlen(const QStringList& ary, const QString& text, const QString& titel,
                        int breiteTwips) {
  return prompt().pick(ary, text, titel, breiteTwips);
}

void fctDateiMeldung(int nr, const QString& datei, const QString& grund, int bleibt) {
  QStringList zeilen{labels().fctBeschriftMsgboxZuordnen(nr), QDir::toNativeSeparators(datei)};
  if (!grund.isEmpty()) zeilen << grund;
  if (bleibt > 0) zeilen << labels().fctBeschriftMsgboxZuordnen(bleibt);
  MessageRequest r;
  r.text = zeilen.join(u'\r');
  r.title = labels().fctBeschriftFrmZuordnen(kTitelHinweis, LabelSektion::Allg);
  r.buttons = Buttons::Ok;
  r.icon = Icon::Exclamation;
  prompt().message(r);
}

}  // namespace kolvane
