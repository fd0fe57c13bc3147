#include "vollbild.h"

#include <QFileInfo>

#include "blockverwaltung.h"
#include "labels.h"
#include "layout.h"
#include "recordhelpers.h"

namespace kolvane {

Vollbild::Vollbild(Blockverwaltung& bv, int ansicht) : bv_(bv), ansicht_(ansicht) {
  // The folder's first slot has no slot before it.
  zurueckAktiv_ = bv_.aktivierteBlocknummer.right(3) != QLatin1String("000");
  if (ansicht_ > 0) vorAktiv_ = zurueckAktiv_ = false;
  zeichnen();
}

Vollbild::Vollbild(Blockverwaltung& bv, const QString& slide, int ansicht)
    : bv_(bv), ansicht_(ansicht), gegeben_(true), vorAktiv_(false), zurueckAktiv_(false) {
  slide_ = slide.right(3).compare(QLatin1String("sld"), Qt::CaseInsensitive) == 0
               ? slide
               : slide + "(" + QString::number(ansicht) + "A)";
  QString datei = slide;
  datei.replace(QLatin1Char('\\'), QLatin1Char('/'));
  titel_ = QFileInfo(datei).fileName();
  if (!titel_.endsWith(QLatin1String("sld"), Qt::CaseInsensitive)) titel_ += " (" + QString::number(ansicht) + "A)";
}

QColor Vollbild::hintergrund() const { return bv_.slideHintergrund(); }

void Vollbild::cmbVor_Click() {
  bv_.Command1_Click(1);
  zeichnen();
}

void Vollbild::cmbZurueck_Click() {
  bv_.Command1_Click(0);
  zeichnen();
}

void Vollbild::zeichnen() {
  if (gegeben_) return;
  titel_.clear();
  Recordset& rs = bv_.bibliothek().rsBlockInfo0;
  if (!fctRsFind(rs, QStringLiteral("Block"), bv_.aktivierteBlocknummer)) {
    slide_ = bv_.frei2();
    return;
  }
  // The designation as the page lists it (old-format characters repaired).
  const size_t slot = size_t(bv_.s1 * bv_.intBilder + bv_.pos);
  QString benennung = slot < bv_.aryTBloecke.size() ? bv_.aryTBloecke[slot].Benennung : QString();
  if (benennung.isEmpty() || benennung == Blockverwaltung::kFrei) benennung = rs.text(QStringLiteral("M0"));
  titel_ = benennung.isEmpty() ? bv_.aktivierteBlocknummer : benennung + " (" + bv_.aktivierteBlocknummer + ")";
  if (ansicht_ > 0)
    titel_ += " - " + labels().fctBeschriftFrmZuordnen(QStringLiteral("frmVollbild.Ansicht")) + " " +
              QString::number(ansicht_);
  const QString slideLib = rs.text(QStringLiteral("SlideLib"));
  slide_ = ansicht_ > 0 ? bv_.slideAdresse(slideLib, QString::number(ansicht_) + "A")
                        : bv_.slideAdresse(slideLib, QStringLiteral("0a"));
}

}  // namespace kolvane
