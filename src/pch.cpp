// Carries the precompiled header that every module reuses; it has no code of its own.
