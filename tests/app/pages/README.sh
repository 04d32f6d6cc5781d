# The reader's second film.
cp media/first.m2v bonus.m2v; cp media/first_en.ac3 bonus.ac3
