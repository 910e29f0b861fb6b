// A host's own file with the name of one of the library's.
#pragma once
#define HOST_EXPORT
