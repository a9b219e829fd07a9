// SPDX-License-Identifier: Apache-2.0
#include "peers/wsmanager/company/DirectorySource.h"

#include "moc_DirectorySearch.cpp"
#include "moc_DirectorySource.cpp"
