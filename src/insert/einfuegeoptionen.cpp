#include "einfuegeoptionen.h"

#include "settings.h"

namespace kolvane {

namespace {

struct Feld {
  const char* box;
  uint8_t EinfuegeOptionen::*option;
  int32_t SetupWerte::*vorgabe;
};

const Feld kFelder[] = {
    {"checkBlock", &EinfuegeOptionen::byteBlockAusBibliothek, &SetupWerte::longBlockAusBibliothek},
    {"checkUrsprung", &EinfuegeOptionen::byteUrsprungBeimEinfuegen,
     &SetupWerte::longUrsprungBeimEinfuegen},
    {"checkXFrage", &EinfuegeOptionen::byteAbfrageXFaktor, &SetupWerte::longAbfrageXFaktor},
    {"checkYFrage", &EinfuegeOptionen::byteAbfrageYFaktor, &SetupWerte::longAbfrageYFaktor},
    {"checkZFrage", &EinfuegeOptionen::byteAbfrageZFaktor, &SetupWerte::longAbfrageZFaktor},
    {"checkWinkel", &EinfuegeOptionen::byteAbfrageEinfuegewinkel,
     &SetupWerte::longAbfrageEinfuegewinkel},
    {"checkAttribute", &EinfuegeOptionen::byteAbfrageAttributeBeimEinfuegen,
     &SetupWerte::longAbfrageAttributeBeimEinfuegen},
    {"checkReihe", &EinfuegeOptionen::byteReihe, &SetupWerte::longReihe},
    {"checkMehr", &EinfuegeOptionen::byteMehrfacheinfuegen, &SetupWerte::longMehrfacheinfuegen},
    {"checkBruch", &EinfuegeOptionen::byteBruchFrage, &SetupWerte::longBruchFrage},
};

const Feld* feld(const QString& box) {
  for (const Feld& f : kFelder)
    if (box == QLatin1String(f.box)) return &f;
  return nullptr;
}

}  // namespace

EinfuegeOptionen EinfuegeOptionen::ausEinstellungen(const SetupWerte& setup) {
  EinfuegeOptionen o;
  for (const Feld& f : kFelder) o.*f.option = setup.*f.vorgabe == 1 ? 1 : 0;
  return o;
}

const QStringList& EinfuegeOptionen::checkBoxen() {
  static const QStringList l = [] {
    QStringList n;
    for (const Feld& f : kFelder) n << QString::fromLatin1(f.box);
    return n;
  }();
  return l;
}

uint8_t* EinfuegeOptionen::option(const QString& checkBox) {
  const Feld* f = feld(checkBox);
  return f ? &(this->*f->option) : nullptr;
}

uint8_t EinfuegeOptionen::wert(const QString& checkBox) const {
  const Feld* f = feld(checkBox);
  return f ? this->*f->option : 0;
}

bool EinfuegeOptionen::setzen(const QString& checkBox, bool an) {
  uint8_t* o = option(checkBox);
  if (!o) return false;
  *o = an ? 1 : 0;
  return true;
}

OptionenSperre fctOptionenSperre(const EinfuegeOptionen& o, bool istLT, const QString& geklickt) {
  OptionenSperre s;
  if (!istLT) return s;
  s.checkXFrage = o.byteAbfrageEinfuegewinkel == 0;
  s.checkWinkel = o.byteAbfrageXFaktor == 0;
  if (!s.checkXFrage && !s.checkWinkel) {
    if (geklickt == QLatin1String("checkXFrage"))
      s.checkXFrage = true;
    else
      s.checkWinkel = true;
  }
  return s;
}

}  // namespace kolvane
