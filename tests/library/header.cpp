#include "vek.h"
