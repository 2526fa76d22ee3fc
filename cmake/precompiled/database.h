// What the sources of the vault's database read besides; compiled once.
#pragma once

#include "cmake/precompiled/plain.h"

#include "arkin/store/Vault.h"

#include <soci/soci.h>
