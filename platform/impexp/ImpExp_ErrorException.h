// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/impexp/ImpExp_Exception.h"

/// One contact cannot be imported or exported; the others can.
class ImpExp_ErrorException : public ImpExp_Exception
{
public:
    using ImpExp_Exception::ImpExp_Exception;
};
