#include "varianeu.h"

#include "bibliothek.h"
#include "blocknameeingeben.h"
#include "diagnostics.h"
#include "labels.h"
#include "msgbox.h"
#include "recordset.h"

namespace kolvane {

namespace {
VariaNeu* offen_ = nullptr;
constexpr int kNameLeer = 136, kNameVergeben = 57, kNameZuLang = 304;
}  // namespace

VariaNeu::VariaNeu(Bibliothek& lib, QString datPfad) : lib_(lib), datPfad_(std::move(datPfad)) {
  neuEinlesen();
  if (!offen_) offen_ = this;
}

VariaNeu::~VariaNeu() {
  if (offen_ == this) offen_ = nullptr;
}

VariaNeu* VariaNeu::offen() { return offen_; }

QStringList VariaNeu::namen() const {
  QStringList n;
  for (const VariantenEintrag& e : eintraege_) n << e.name;
  return n;
}

void VariaNeu::neuEinlesen() {
  Trace t(QStringLiteral("frmVariaNeu.lisAuswahl"));
  eintraege_ = fctVariantenEintraege(lib_, datPfad_);
  if (gewaehlt >= eintraege_.size()) gewaehlt = int(eintraege_.size()) - 1;
}

const VariantenEintrag* VariaNeu::zeileGewaehlt() const {
  if (gewaehlt < 0 || gewaehlt >= eintraege_.size()) {
    subMsgboxInfoEinzeilig(kVariaKeineAuswahl);
    return nullptr;
  }
  const VariantenEintrag& e = eintraege_[gewaehlt];
  if (e.art == VariantenEintrag::Art::Ansicht) {
    subMsgboxInfoEinzeilig(kVariaErsterEintrag);
    return nullptr;
  }
  if (e.art == VariantenEintrag::Art::Liste) {
    subMsgboxInfoEinzeilig(kVariaListenEintrag);
    return nullptr;
  }
  return &e;
}

bool VariaNeu::cmdVariatenNeu_Click() { return modus == Modus::Umbenennen ? umbenennen() : loeschen(); }

bool VariaNeu::nameFrei(const QString& name, int64_t ausser) const {
  // Compared row by row, not by a criterion: a name may hold quotes. Names of
  // variants are unique in the library, as their creation demands.
  Recordset rs;
  if (!rs.Open(QStringLiteral("SELECT Nr, BlockName FROM tblVariationBloecke"), lib_.connDb)) {
    subErrorAllgemein(false, QStringLiteral("frmVariaNeu.cmdVariatenNeu"), rs.lastError());
    return false;
  }
  for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext())
    if (rs.value(QStringLiteral("Nr")).toLongLong() != ausser &&
        rs.text(QStringLiteral("BlockName")).trimmed().compare(name, Qt::CaseInsensitive) == 0)
      return false;
  return true;
}

bool VariaNeu::umbenennen() {
  Trace t(QStringLiteral("frmVariaNeu.cmdVariatenNeu Umbenennen"));
  const VariantenEintrag* e = zeileGewaehlt();
  if (!e) return false;
  const int64_t nr = e->nr;
  QString vorschlag = e->name;
  for (;;) {
    Labels& l = labels();
    const std::optional<QString> neu =
        fctInputBoxAnzeigen(l.fctBeschriftFrmZuordnen(QStringLiteral("frmVariaNeu.labUmbenennen")),
                            l.fctBeschriftFrmZuordnen(QStringLiteral("frmVariaNeu.CaptionUmbenennen")), vorschlag);
    if (!neu) return false;
    const QString name = neu->trimmed();
    vorschlag = name;
    if (name == e->name) return false;
    if (name.isEmpty()) {
      subMsgboxInfoEinzeilig(kNameLeer);
    } else if (name.size() > BlocknameEingeben::kMaxLaenge) {
      subMsgboxInfoEinzeilig(kNameZuLang);
    } else if (!nameFrei(name, nr)) {
      subMsgboxInfoEinzeilig(kNameVergeben);
    } else {
      t.step(QStringLiteral("BlockName ") + name);
      if (!lib_.connDb.execute(QStringLiteral("UPDATE tblVariationBloecke SET BlockName = ? WHERE Nr = ?"),
                               {name, qlonglong(nr)})) {
        subErrorAllgemein(false, QStringLiteral("frmVariaNeu.cmdVariatenNeu"), lib_.connDb.error());
        return false;
      }
      geaendert_ = true;
      neuEinlesen();
      return true;
    }
    // A refused name is asked again, with the text for correction.
  }
}

bool VariaNeu::loeschen() {
  Trace t(QStringLiteral("frmVariaNeu.cmdVariatenNeu Loeschen"));
  const VariantenEintrag* e = zeileGewaehlt();
  if (!e) return false;
  if (!fctMsgboxFrageEinzeilig(kVariaLoeschenFrage)) return false;
  const VariantenEintrag kopie = *e;
  const bool ok = fctVarianteLoeschen(lib_, datPfad_, kopie);
  geaendert_ = geaendert_ || ok;
  neuEinlesen();
  return ok;
}

}  // namespace kolvane
