#include <QStringList>

#include "startservice.h"

// The program's client side on a socket of the test's own:
//   cad_start_client SOCKET --start3 NAME
int main(int argc, char** argv) {
  if (argc < 2) return 2;
  QStringList args;
  for (int i = 2; i < argc; ++i) args << QString::fromLocal8Bit(argv[i]);
  return kolvane::runStartClient(args, QString::fromLocal8Bit(argv[1]));
}
