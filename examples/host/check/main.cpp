// Checks that this host keeps the contract of host/.

#include "Hooks.h"

int main(int argc, char** argv) {
  return hostcheck::HostCheckMain(argc, argv, [] { return std::make_unique<workshop::Hooks>(); });
}
