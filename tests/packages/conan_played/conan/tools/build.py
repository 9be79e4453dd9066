def can_run(recipe):
    """We cross-compile."""
    return False
