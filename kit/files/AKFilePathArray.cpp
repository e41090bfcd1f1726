#include "kit/files/AKFilePathArray.h"

#include <algorithm>

void AKFilePathArray::Sort() { std::sort(begin(), end()); }
