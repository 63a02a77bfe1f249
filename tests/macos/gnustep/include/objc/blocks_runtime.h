// GNUstep asks for this header where the compiler knows blocks, and needs nothing of it here.
#pragma once
