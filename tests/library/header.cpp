#include "hsk.h"
#include "hsk_control.h"
#include "vek.h"
