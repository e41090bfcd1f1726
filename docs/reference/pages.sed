# Links that lead out of the reference become their words.
s/\[([^][]*)\]\((\.\.\/[^)]*|[^)]*\.json)\)/\1/g
