// Placeholder translation unit for an empty object library.
