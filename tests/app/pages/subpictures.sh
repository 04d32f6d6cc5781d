# The reader's project.
cp project.qvp film.qvp
