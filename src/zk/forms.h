#pragma once

// Forms: the components that forms can hold, and reading forms at run time.

#include <zk/forms/formclasses.h>
#include <zk/forms/formloader.h>
