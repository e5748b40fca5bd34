# The generated filler sources; written by transform/data/generate.py.
set(ZELVO_UNICODE_DATA_SOURCES)
