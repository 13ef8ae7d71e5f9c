#include "app/program.h"
