"""Random programs against the typed interface: generated, run in processes of their own, shrunk to what fails."""
