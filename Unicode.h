// The umbrella header of the zelvo Unicode library: every public header.
#pragma once

#include "codepage/CodePage.h"
#include "codepage/CodePageTranslator.h"
#include "string/String.h"
#include "transform/UnicodeOperations.h"
#include "transform/UnicodeTransformationTables.h"
