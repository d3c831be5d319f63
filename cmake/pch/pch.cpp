// The one file of the libraries that hold a precompiled header; it has nothing of its own.
