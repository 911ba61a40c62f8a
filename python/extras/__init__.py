"""What is written by hand for the proxy packages; each file lends its classes' attributes and bases to the
proxy classes of the same names."""
