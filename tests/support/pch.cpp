// Carries the precompiled header that every test reuses; it has no code of its own.
