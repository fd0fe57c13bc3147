#pragma once
#include <QString>
#include <QStringList>
#include <optional>

namespace kolvane {

class CadBridge;

// What the program puts into the host's environment: the menu with its Lisp,
// the Lisp function of the keystroke insert, the Lisp variables of an insert,
// and the start command of the layer manager. Files for the host are written
// to the bridge's per-user data directory and loaded by full path.

// The start command file: four lines that define the host command `name`
// starting the program `exe` (backslashes doubled for Lisp).
bool fctMnlSchreiben(const QString& datei, const QString& name, const QString& exe);

// The menu for the host in the data directory: "ikolvane.mnl" is written anew
// (the start command) unless "kolvane.mnu" stands in the program directory;
// the master "ikolvane.mnu" becomes "kolvane.mnu", and "kolvane.mnl" is the
// start command followed by the master "ikolvane.mnl", with "%KOLVANE%" there
// replaced by the program's path. A missing master or a failed copy is
// reported and gives false; the program goes on without the menu.
bool fctAcadMenueEinrichten(CadBridge& b);

// Loads the menu group "kolvane" unless the host has it, then its Lisp file.
bool fctAcadMenueLaden(CadBridge& b);

// "insert.lsp": the Lisp function kolvane_einfuege of the keystroke insert.
// Written only when the file is absent, so a changed file stays in use.
bool WriteInsertLsp(const QString& strDatei);

// The ten data-card values of the inserted block (columns M0 to M9; nullopt
// when the record set stands on no row) as the Lisp variables bver_dat1 to
// bver_dat10, then blkname. Only with the setup value lonLispVarUebergeben = 1.
// Double quotes in a value are escaped, backslashes not. intFehler counts the
// sends that failed.
bool fctLispVariablenZuordnen(CadBridge& b, const std::optional<QStringList>& werteM0bisM9,
                              const QString& strBlockName, int& intFehler);

// The host command `lman` in the user's "lman.lsp", found on the host's search
// path, when the label InAcadLspEintragen is "1": the old file is kept as
// "lmanold.lsp" unless that exists already. Then the file is loaded and the
// document events are hooked again.
bool fctLmanStartbefehlEintragen(CadBridge& b);

}  // namespace kolvane
