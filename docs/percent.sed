# In the comments of headers, but for their programs: Doxygen takes a % away that stands before a word, unless there are two.
/^ *\/\/\/ {0,4}[^ ]/ s/%([A-Za-z])/%%\1/g
