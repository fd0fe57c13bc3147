#pragma once
#include <QString>
#include <cstdint>

namespace kolvane {

class CadBridge;
struct EinfuegeOptionen;
struct EinfuegeWerte;

// One pass of an insert on the automation route: the series that places the
// block, then the follow-ups that address it by (entlast). Escape or the right
// button at the pick sets Unterbrechung, and every later string is skipped;
// at the move of a further point it also erases the block placed at the origin.
class Einfuegeserie {
 public:
  Einfuegeserie(CadBridge& b, const EinfuegeOptionen& o, int32_t longEinfuegenLayer0,
                const QString& programmVerzeichnis);

  // The series of point A or of another point. False when the host refused a
  // string (reported).
  bool serieSenden(EinfuegeWerte& w);
  // Break, layer, layer 0, attributes, explode, array, Lisp variables and the
  // block's own command, in that order. False as above.
  bool folgebefehleSenden(const EinfuegeWerte& w);

 private:
  bool senden(const QString& befehl);
  bool sendenUndWarten(const QString& befehl);
  bool serieEinPunkt(EinfuegeWerte& w);
  bool serieAndererPunkt(EinfuegeWerte& w);

  CadBridge& b_;
  const EinfuegeOptionen& o_;
  int32_t longEinfuegenLayer0_;
  QString programmVerzeichnis_;
};

}  // namespace kolvane
