#error "There is no malloc.h there."
