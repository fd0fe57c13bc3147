#pragma once
#include <cstdint>
#include <functional>

namespace kolvane {

class CadBridge;
struct EinfuegeOptionen;
struct EinfuegeWerte;

// The insert through the Lisp function kolvane_einfuege (insert.lsp, written
// when absent): the load and the call are typed into the host's window. The
// main form hides meanwhile (`hauptform(false)`, then true). Ends with
// Unterbrechung = 1, which also ends a marked list. False when a key string
// could not be typed.
bool fctLispRouteEinfuegen(CadBridge& b, const EinfuegeOptionen& o, const EinfuegeWerte& w,
                           int32_t longEinfuegenLayer0, const std::function<void(bool)>& hauptform);

}  // namespace kolvane
