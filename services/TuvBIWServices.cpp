#include "services/TuvBIWServices.h"

TuvBIWServices::TuvBIWServices() = default;
TuvBIWServices::~TuvBIWServices() = default;
