#pragma once
#include <QString>
#include <QStringList>
#include <array>

#include "host.h"

namespace kolvane {

class CadBridge;

// The preview slides of a new view: one slide per insertion point, shot by the
// host in the picked frame with a red disk on its point, then bound into the
// view's slide library by the slidelib tool, which the host runs through its
// shell. All files are made in the run's temporary directory.

// Diameter of the red mark from the picture frame, as text with "." as
// decimal point: a tenth of the width of a wide frame, 0.16 of the height of
// a tall one, and 0 for a frame of exactly 5 to 3.
QString GroesseRoterKreisFuerEinfuegepktBestimmen(const HostPoint& pZ1, const HostPoint& pZ2);

// The strings the capture sends.
QString fctDonutBefehl(const QString& durchmesser, const HostPoint& punkt);
QString fctRotFaerbenBefehl();   // the last entity red
QString fctLetztesLoeschenBefehl();
QString fctMslideBefehl(const QString& slideDatei);
// The first slide shot again over the old one ("_y" answers the question).
QString fctMslideErsetzenBefehl(const QString& slideDatei);
QString fctShellBefehl(const QString& skript);

// The slide files of a view in the temporary directory: <T>/<V><letter>.sld.
QString fctTempSlide(const QString& temp, const QString& slideName);

// dialist.txt: one line per slide, its full path, in the order of the names.
// False (reported) when it can't be written.
bool DialisteSchreiben(const QString& temp, const QStringList& slideNamen);

// The slidelib tool: beside the program's files, beside the executable (an
// installed program keeps its data apart), or on the search path.
QString fctSlidelibProgramm(const QString& programmVerzeichnis);

// Slidelib.sh: the one line that runs the tool on the list, executable.
// Returns its path; "" (reported) when it can't be written.
QString fctSlidelibSkriptSchreiben(const QString& temp, const QString& programmVerzeichnis,
                                   const QString& slideLibDateiName);

// The mark for one point and its slide: donut, red, mslide into the temporary
// directory (made if missing).
bool SlidesErstellen(CadBridge& b, const QString& temp, const HostPoint& einfuegepunkt,
                     const QString& slideName, const QString& ringAussenDurchmesser);

// Waits for a file the host writes: true once it exists with content. The
// host's strings are worked by the time SendCommand returns; what runs beyond
// (a slow shell) is waited for in short steps, with events served, up to
// `sekunden`.
bool fctAufDateiWarten(const QString& datei, int sekunden = 7);

}  // namespace kolvane
