#pragma once

// The whole unit _zkxyarrays: operations on polygons and on lists of polygons.
